#pragma once

#include <string>
#include <string_view>

#include <zelcore/File.h>

namespace zelfuzz {

/// A folder of this process's own, for what is only read from files. Gone with the object.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& GetPath() const { return mPath; }
    std::string Path(const std::string& name) const { return mPath + "/" + name; }
    zelcore::filesupport::File GetFile(const std::string& name) const;
    /// Makes or overwrites a file.
    void Write(const std::string& name, std::string_view bytes) const;
    /// Deletes all that is in it.
    void Clear() const;

private:
    std::string mPath;
};

}  // namespace zelfuzz
