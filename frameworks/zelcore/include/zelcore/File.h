#pragma once

#include <zelcore/Dir.h>

namespace zelcore {
namespace filesupport {

/// A file, named by its full path. Making one touches no disk. Values; any thread.
class ZELCORE_API File {
public:
    File();
    /// The file of that full path.
    explicit File(const ustring& fullPath);
    /// The file of that name in a folder.
    File(const Dir& dir, const ustring& name);

    /// Full path, the name included.
    const ustring& FullPath() const { return mPath; }
    /// The folder that the file is in.
    Dir GetDir() const;
    /// The name without folders.
    ustring GetName() const;
    /// The name without folders and without its last extension: "Delay" for "/usr/lib/vst/Delay.so". A name that is
    /// only an extension (".vst") is its own title.
    ustring GetTitle() const;
    /// True when there is a regular file (or a link to one) of that name.
    bool Exists() const;
    /// Deletes the file. Throws FileError when it cannot; a file that is not there is an error too.
    void Delete() const;

    /// Equal when the paths are, by the letter.
    bool operator==(const File&) const = default;

private:
    ustring mPath;
};

}  // namespace filesupport
}  // namespace zelcore
