#include "StandardFolders.h"

#include <windows.h>

#include <shlobj.h>

#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

#include "NativePath_win32.h"
#include "PathRules.h"

namespace zelcore {
namespace filesupport {

namespace {

/// Longer than any path of the system, its end included.
constexpr DWORD kMaxPath = 32768;

/// The roaming profile as the environment names it; empty when it does not. It says the same as the shell does, unless
/// who started this program wants its settings elsewhere. A relative one would move with the current folder.
ustring FolderFromEnvironment() {
    std::wstring path(kMaxPath, 0);
    const DWORD length = GetEnvironmentVariableW(L"APPDATA", path.data(), kMaxPath);
    if (length == 0 || length >= kMaxPath) return ustring();
    const ustring folder = FromWide(path.substr(0, length));
    return IsAbsolutePath(folder) ? folder : ustring();
}

}  // namespace

ustring UserSettingsFolder() {
    const ustring configured = FolderFromEnvironment();
    if (!configured.empty()) return configured;
    wchar_t* path = nullptr;
    const HRESULT result = SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_DEFAULT, nullptr, &path);
    const ustring folder = SUCCEEDED(result) ? FromWide(path) : ustring();
    CoTaskMemFree(path);
    if (folder.empty()) throw FileError("find the folder of settings", utility::AsciiToUTF16("%APPDATA%"), result);
    return folder;
}

ustring ProgramFolder() {
    std::wstring path(kMaxPath, 0);
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), kMaxPath);
    if (length == 0 || length >= kMaxPath)
        throw FileError("find the file of", utility::AsciiToUTF16("the program"), static_cast<int>(GetLastError()));
    return ParentFolder(FromWide(path.substr(0, length)));
}

}  // namespace filesupport
}  // namespace zelcore
