#pragma once

#include <stdexcept>
#include <string>

#include <zelcore/Export.h>
#include <zelcore/ustring.h>

namespace zelcore {
namespace filesupport {

/// What the file operations throw: which operation failed on which file, and the system's reason, in one line of text.
class ZELCORE_API FileError : public std::runtime_error {
public:
    /// `operation` is the verb of what could not be done ("write"), `systemError` the system's number of the reason.
    FileError(const std::string& operation, const ustring& path, int systemError);
    ~FileError() override;

    /// The file or folder that it was about.
    const ustring& GetPath() const { return mPath; }
    /// The platform's error number (`errno`, `GetLastError`); 0 when the reason is not the system's.
    int GetSystemError() const { return mSystemError; }

private:
    ustring mPath;
    int mSystemError;
};

}  // namespace filesupport
}  // namespace zelcore
