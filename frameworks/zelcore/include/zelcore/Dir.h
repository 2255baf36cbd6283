#pragma once

#include <zelcore/Export.h>
#include <zelcore/ustring.h>

namespace zelcore {
namespace filesupport {

/// A folder, named by its full path. Making one touches no disk. Values; any thread, the settable folders excepted.
class ZELCORE_API Dir {
public:
    Dir();
    /// The folder of that full path; separators at its end do not count.
    explicit Dir(const ustring& path);

    /// Full path without a separator at its end (but for a root).
    const ustring& FullPath() const { return mPath; }
    /// True when there is a folder (or a link to one) of that name.
    bool Exists() const;
    /// Makes the folder and what is missing above it, for the current user only. Throws FileError.
    void Create() const;

    /// The application's preferences folder, made when it is not there. `$XDG_CONFIG_HOME/<application>` (by default
    /// `~/.config/<application>`) on Linux, the roaming profile on Windows, or what SetPrefDir gave. Throws FileError
    /// when it cannot be made.
    static Dir PrefDir();
    /// The folder of the host application's executables: that of the running program, or what SetAppDir gave.
    static Dir AppDir();

    /// Hosts and tests choose other folders with these, before anything uses them. An empty Dir goes back to the
    /// platform's own. Main thread, while no scan runs.
    static void SetPrefDir(const Dir& dir);
    /// The same for AppDir.
    static void SetAppDir(const Dir& dir);
    /// Name of the application's own folder inside the platform's; "tessaly" until set.
    static void SetApplicationFolderName(const ustring& name);

    /// Equal when the paths are, by the letter.
    bool operator==(const Dir&) const = default;

private:
    ustring mPath;
};

}  // namespace filesupport
}  // namespace zelcore
