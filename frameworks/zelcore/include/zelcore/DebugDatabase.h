#pragma once

#include <map>
#include <string>

#include <zelcore/Export.h>

namespace zelcore {
namespace debug {

/// Developer settings by name: lines `name=value` of "DebugDatabase.txt" in the preferences folder, read once at first
/// use; `#` starts a comment line, spaces around name and value do not count, and the last line of a name wins. Lines
/// of another form are ignored, and so is a file larger than 1 MiB. The environment variable ZEL_DEBUG_<name> (every
/// character of the name but ASCII letters and digits written as "_") wins over the file. Main thread only.
class ZELCORE_API DebugDatabase {
public:
    /// The one database; made when it is first asked for.
    static DebugDatabase& Instance();

    /// The value of `key`, or `defaultValue` when nobody set it.
    std::string GetEntry(const std::string& key, const std::string& defaultValue) const;
    /// The value of `key` as a switch: true for "true" and "1", false for "false" and "0", else `defaultValue`.
    bool GetBool(const std::string& key, bool defaultValue) const;
    /// Sets a value for this run only; wins over file and environment.
    void SetEntry(const std::string& key, const std::string& value);
    /// Reads the file anew and forgets what SetEntry set.
    void Reload();

private:
    DebugDatabase();
    ~DebugDatabase();
    DebugDatabase(const DebugDatabase&) = delete;
    DebugDatabase& operator=(const DebugDatabase&) = delete;

    std::map<std::string, std::string> mFileEntries;
    std::map<std::string, std::string> mRunEntries;
};

}  // namespace debug
}  // namespace zelcore
