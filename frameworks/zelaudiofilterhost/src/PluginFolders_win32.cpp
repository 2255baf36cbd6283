#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "PluginFolders.h"
#include "WidePath_win32.h"

namespace zelaudiofilterhost {

namespace {

std::wstring KnownFolder(const KNOWNFOLDERID& id) {
    PWSTR found = nullptr;
    const std::wstring path = SHGetKnownFolderPath(id, 0, nullptr, &found) == S_OK ? found : L"";
    CoTaskMemFree(found);
    return path;
}

bool IsSameWide(std::wstring_view left, std::wstring_view right) {
    return left.size() == right.size() && CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                                               static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

/// Collects folders and passes over relative ones, those whose name is no text, and second names of one that is there.
class FolderList {
public:
    void Add(std::wstring path) {
        std::replace(path.begin(), path.end(), L'/', L'\\');
        while (path.size() > 1 && path.back() == L'\\' && path[path.size() - 2] != L':') path.pop_back();
        if (!IsFullWidePath(path) || ToWide(ToUtf8(path)) != path) return;
        std::error_code error;
        std::filesystem::path place = std::filesystem::weakly_canonical(path, error);
        if (error) place = std::filesystem::path(path).lexically_normal();
        place.make_preferred();
        const auto isThere = [&place](const std::wstring& known) { return IsSameWide(known, place.native()); };
        if (std::any_of(mPlaces.begin(), mPlaces.end(), isThere)) return;
        mPlaces.push_back(place.native());
        mFolders.push_back(FromWide(path));
    }

    /// `name` below a folder of the system's, unless the system has no such folder.
    void AddBelow(const std::wstring& folder, const wchar_t* name) {
        if (!folder.empty()) Add(folder + L'\\' + name);
    }

    /// A list of folders with semicolons between them.
    void AddVariable(const wchar_t* name) {
        std::wstring value(kMaxWidePath, L'\0');
        const DWORD length = GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
        std::wstring_view rest(value.data(), length < value.size() ? length : 0);
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find(L';'), rest.size());
            Add(std::wstring(rest.substr(0, end)));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }

    /// What installers have agreed on as the place of VST modules.
    void AddRegistered(HKEY root) {
        std::wstring value(kMaxWidePath, L'\0');
        DWORD bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
        if (RegGetValueW(root, L"SOFTWARE\\VST", L"VSTPluginsPath", RRF_RT_REG_SZ, nullptr, value.data(), &bytes) !=
            ERROR_SUCCESS)
            return;
        Add(value.c_str());
    }

    const std::vector<ustring>& Get() const { return mFolders; }

private:
    std::vector<ustring> mFolders;
    std::vector<std::wstring> mPlaces;
};

std::vector<ustring> VstFolders() {
    FolderList list;
    list.AddVariable(L"VST_PATH");
    list.AddRegistered(HKEY_CURRENT_USER);
    list.AddRegistered(HKEY_LOCAL_MACHINE);
    const std::wstring programs = KnownFolder(FOLDERID_ProgramFiles);
    const std::wstring common = KnownFolder(FOLDERID_ProgramFilesCommon);
    list.AddBelow(programs, L"VstPlugins");
    list.AddBelow(programs, L"Steinberg\\VstPlugins");
    list.AddBelow(common, L"VST2");
    list.AddBelow(common, L"Steinberg\\VST2");
    return list.Get();
}

std::vector<ustring> Vst3Folders() {
    FolderList list;
    list.AddVariable(L"VST3_PATH");
    list.AddBelow(KnownFolder(FOLDERID_UserProgramFilesCommon), L"VST3");
    list.AddBelow(KnownFolder(FOLDERID_ProgramFilesCommon), L"VST3");
    return list.Get();
}

}  // namespace

std::vector<ustring> DefaultPluginFolders(TechnologyType technology) {
    switch (technology) {
        case kTechnologyVST:
            return VstFolders();
        case kTechnologyVST3:
            return Vst3Folders();
        default:
            return std::vector<ustring>();
    }
}

ustring VstModuleExtension() { return zelcore::utility::AsciiToUTF16(".dll"); }

bool IsFullPath(const ustring& path) { return IsFullWidePath(ToWide(path)); }

bool IsSameName(const ustring& left, const ustring& right) { return IsSameWide(ToWide(left), ToWide(right)); }

}  // namespace zelaudiofilterhost
