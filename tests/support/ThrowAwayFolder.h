#pragma once

#include <filesystem>
#include <string>

#include <zelcore/Dir.h>

namespace zeltests {

/// A fresh folder that goes with the object, whatever is in it by then.
class ThrowAwayFolder {
public:
    ThrowAwayFolder();
    ~ThrowAwayFolder();
    ThrowAwayFolder(const ThrowAwayFolder&) = delete;
    ThrowAwayFolder& operator=(const ThrowAwayFolder&) = delete;

    const std::string& GetPath() const { return mPath; }
    zelcore::filesupport::Dir GetDir() const;
    /// Full path of `name` inside the folder.
    std::string Path(const std::string& name) const { return mPath + "/" + name; }
    zelcore::ustring UPath(const std::string& name) const;

private:
    std::string mPath;
};

/// A throw-away folder that is the preferences folder while the object lives.
class ThrowAwayPreferences {
public:
    ThrowAwayPreferences();
    ~ThrowAwayPreferences();

    const ThrowAwayFolder& GetFolder() const { return mFolder; }

private:
    ThrowAwayFolder mFolder;
};

/// The path for the standard library, out of UTF-8.
std::filesystem::path ToPath(const std::string& path);

/// The path as programs name it: full, with the system's own separators.
std::string FullName(const std::string& path);

/// Whole content of a file; fails the test when it cannot be read.
std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& bytes);

}  // namespace zeltests
