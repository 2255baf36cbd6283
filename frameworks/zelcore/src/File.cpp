#include <zelcore/File.h>

#include "FileSystem.h"
#include "PathRules.h"

namespace zelcore {
namespace filesupport {

File::File() = default;

File::File(const ustring& fullPath) : mPath(fullPath) {}

File::File(const Dir& dir, const ustring& name) : mPath(JoinPath(dir.FullPath(), name)) {}

Dir File::GetDir() const { return Dir(ParentFolder(mPath)); }

ustring File::GetName() const { return mPath.substr(FindNameStart(mPath)); }

ustring File::GetTitle() const {
    const ustring name = GetName();
    const std::size_t dot = name.rfind('.');
    return dot == ustring::npos || dot == 0 ? name : name.substr(0, dot);
}

bool File::Exists() const { return IsRegularFile(mPath); }

void File::Delete() const { DeleteRegularFile(mPath); }

}  // namespace filesupport
}  // namespace zelcore
