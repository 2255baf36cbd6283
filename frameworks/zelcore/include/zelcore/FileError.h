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
    /// The verbs that GetLocalizedText has texts for: delete, extend, find a free name for, find the home folder, look
    /// at, make the folder, measure, open, open as a regular file, read, read the link, rename, save so large a, write,
    /// write as a regular file.
    FileError(const std::string& operation, const ustring& path, int systemError);
    ~FileError() override;

    /// The same as what() for people, in the language of the Localizer; an operation that it has no text for, and a
    /// reason that is a rare one, are as they are in what(). Main thread.
    ustring GetLocalizedText() const;

    /// The file or folder that it was about.
    const ustring& GetPath() const { return mPath; }
    /// The platform's error number (`errno`, `GetLastError`); 0 when the reason is not the system's.
    int GetSystemError() const { return mSystemError; }

private:
    std::string mOperation;
    ustring mPath;
    int mSystemError;
};

}  // namespace filesupport
}  // namespace zelcore
