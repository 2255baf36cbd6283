#include "StandardFolders.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

#include <pwd.h>
#include <unistd.h>

#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

#include "PathRules.h"

namespace zelcore {
namespace filesupport {

namespace {

/// The folder that an environment variable names; empty when it names none. Relative ones would move with the current
/// folder and are taken as not set, as the base directory rules ask for.
ustring FolderFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    const ustring path = value ? utility::UTF8to16(value) : ustring();
    return IsAbsolutePath(path) ? path : ustring();
}

ustring HomeFolderFromDatabase() {
    std::vector<char> buffer(1024);
    passwd entry;
    passwd* found = nullptr;
    int error = 0;
    while ((error = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found)) == ERANGE &&
           buffer.size() < (1u << 20))
        buffer.resize(buffer.size() * 2);
    const ustring home = error == 0 && found && found->pw_dir ? utility::UTF8to16(found->pw_dir) : ustring();
    if (!IsAbsolutePath(home)) throw FileError("find the home folder", utility::AsciiToUTF16("~"), error);
    return home;
}

}  // namespace

ustring UserSettingsFolder() {
    const ustring configured = FolderFromEnvironment("XDG_CONFIG_HOME");
    if (!configured.empty()) return configured;
    const ustring home = FolderFromEnvironment("HOME");
    return JoinPath(home.empty() ? HomeFolderFromDatabase() : home, utility::AsciiToUTF16(".config"));
}

ustring ProgramFolder() {
    const char* const kProgram = "/proc/self/exe";
    std::vector<char> buffer(256);
    for (;;) {
        const ssize_t length = ::readlink(kProgram, buffer.data(), buffer.size());
        if (length < 0) throw FileError("read the link", utility::AsciiToUTF16(kProgram), errno);
        const std::size_t size = static_cast<std::size_t>(length);
        if (size < buffer.size()) return ParentFolder(utility::UTF8to16(std::string_view(buffer.data(), size)));
        buffer.resize(buffer.size() * 2);
    }
}

}  // namespace filesupport
}  // namespace zelcore
