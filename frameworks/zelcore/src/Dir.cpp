#include <zelcore/Dir.h>

#include <mutex>

#include <zelcore/Utf.h>

#include "FileSystem.h"
#include "PathRules.h"
#include "StandardFolders.h"

namespace zelcore {
namespace filesupport {

namespace {

struct ChosenFolders {
    std::mutex mutex;
    Dir prefDir;
    Dir appDir;
    ustring applicationFolderName = utility::AsciiToUTF16("tessaly");
};

ChosenFolders& GetChosen() {
    // Never freed: destructors of other static objects may still ask for folders.
    static ChosenFolders* const sChosen = new ChosenFolders;
    return *sChosen;
}

ustring DefaultPrefPath(const ustring& applicationFolderName) {
    return JoinPath(UserSettingsFolder(), applicationFolderName);
}

}  // namespace

Dir::Dir() = default;

Dir::Dir(const ustring& path) : mPath(WithoutTrailingSeparators(path)) {}

bool Dir::Exists() const { return IsFolder(mPath); }

void Dir::Create() const {
    if (Exists()) return;
    // From the top down, so that a path of any length costs no stack and ends at the first folder that cannot be made.
    for (std::size_t end = FindSeparator(mPath, FindRootEnd(mPath)); end < mPath.size();
         end = FindSeparator(mPath, end + 1)) {
        const ustring above = mPath.substr(0, end);
        if (!IsFolder(above)) MakeFolder(above);
    }
    MakeFolder(mPath);
}

Dir Dir::PrefDir() {
    Dir dir;
    ustring name;
    {
        const std::lock_guard<std::mutex> lock(GetChosen().mutex);
        dir = GetChosen().prefDir;
        name = GetChosen().applicationFolderName;
    }
    if (dir == Dir()) dir = Dir(DefaultPrefPath(name));
    dir.Create();
    return dir;
}

Dir Dir::AppDir() {
    {
        const std::lock_guard<std::mutex> lock(GetChosen().mutex);
        if (GetChosen().appDir != Dir()) return GetChosen().appDir;
    }
    return Dir(ProgramFolder());
}

void Dir::SetPrefDir(const Dir& dir) {
    const std::lock_guard<std::mutex> lock(GetChosen().mutex);
    GetChosen().prefDir = dir;
}

void Dir::SetAppDir(const Dir& dir) {
    const std::lock_guard<std::mutex> lock(GetChosen().mutex);
    GetChosen().appDir = dir;
}

void Dir::SetApplicationFolderName(const ustring& name) {
    const std::lock_guard<std::mutex> lock(GetChosen().mutex);
    GetChosen().applicationFolderName = name;
}

}  // namespace filesupport
}  // namespace zelcore
