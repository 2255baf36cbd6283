#include "OwnedHandle_win32.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "FolderWalk.h"
#include "WidePath_win32.h"

namespace zelaudiofilterhost {

namespace {

using zelcore::ustring;

/// Between the beginning of 1601, where the system's times begin, and that of 1970.
constexpr std::int64_t kEpochMilliseconds = 11644473600000;

std::int64_t Milliseconds(const FILETIME& time) {
    return static_cast<std::int64_t>(JoinHalves(time.dwHighDateTime, time.dwLowDateTime) / 10000) - kEpochMilliseconds;
}

/// False when it is no valid UTF-16 and so could not be found again by its UTF-8.
bool IsText(const std::wstring& name) { return ToWide(ToUtf8(name)) == name; }

/// The path without the prefix that the system puts before those that it gives.
std::wstring WithoutPrefix(std::wstring path) {
    constexpr std::wstring_view kShare = L"\\\\?\\UNC\\";
    constexpr std::wstring_view kDrive = L"\\\\?\\";
    if (path.starts_with(kShare)) return L"\\\\" + path.substr(kShare.size());
    if (path.starts_with(kDrive)) return path.substr(kDrive.size());
    return path;
}

/// A file or folder, held open for its facts.
class WalkedPlace {
public:
    explicit WalkedPlace(const std::wstring& path)
        : mHandle(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareEverything, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
          mIsThere(mHandle.IsOpen() && IsFileOnDisk(mHandle.Get()) &&
                   GetFileInformationByHandle(mHandle.Get(), &mFacts)) {}

    bool IsThere() const { return mIsThere; }
    bool IsFolder() const { return (mFacts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    std::uint64_t GetSize() const { return IsFolder() ? 0 : JoinHalves(mFacts.nFileSizeHigh, mFacts.nFileSizeLow); }
    std::int64_t GetModificationTime() const { return Milliseconds(mFacts.ftLastWriteTime); }
    std::pair<DWORD, std::uint64_t> GetIdentity() const {
        return {mFacts.dwVolumeSerialNumber, JoinHalves(mFacts.nFileIndexHigh, mFacts.nFileIndexLow)};
    }

    /// The path with the links followed and the names as they are written on the disk; empty when the system does not
    /// tell.
    std::wstring GetFinalPath() const {
        std::wstring path(kMaxWidePath, L'\0');
        const DWORD length = GetFinalPathNameByHandleW(mHandle.Get(), path.data(), static_cast<DWORD>(path.size()),
                                                       FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        if (length >= path.size()) return std::wstring();
        path.resize(length);
        return WithoutPrefix(std::move(path));
    }

private:
    const OwnedHandle mHandle;
    BY_HANDLE_FILE_INFORMATION mFacts = {};
    const bool mIsThere;
};

struct Name {
    std::string order;  ///< the name's UTF-8, by which all platforms sort alike
    std::wstring text;
    bool isLink;
};

class Walk {
public:
    /// With `slashes`, paths are told with these instead of the system's own separators.
    Walk(const std::function<bool(const WalkEntry&)>& visit, bool slashes)
        : mVisit(visit), mSlashes(slashes), mLeft(kMaxWalkEntries) {}

    /// `path` has no link in it but perhaps its last name.
    void VisitPath(const std::wstring& path, const std::wstring& name, bool isLink, int depth) {
        std::wstring target = path;
        WalkEntry entry;
        std::pair<DWORD, std::uint64_t> identity;
        {
            const WalkedPlace place(path);
            if (!place.IsThere()) return;
            if (isLink) target = place.GetFinalPath();
            if (target.empty() || !IsText(target) || !IsText(name)) return;
            entry.path = FromWide(target);
            if (mSlashes)
                std::replace(entry.path.begin(), entry.path.end(), ustring::value_type('\\'), ustring::value_type('/'));
            entry.name = FromWide(name);
            entry.isFolder = place.IsFolder();
            entry.size = place.GetSize();
            entry.modificationTime = place.GetModificationTime();
            identity = place.GetIdentity();
        }
        if (!mVisit(entry) || !entry.isFolder || depth == kMaxWalkDepth) return;
        if (mEntered.insert(identity).second) VisitNamesIn(target, depth + 1);
    }

private:
    void VisitNamesIn(const std::wstring& folder, int depth) {
        const std::wstring start = folder.back() == L'\\' ? folder : folder + L'\\';
        for (const Name& name : SortedNames(start)) VisitPath(start + name.text, name.text, name.isLink, depth);
    }

    /// The folder is closed again before anything below it is visited, so that depth costs no handles.
    std::vector<Name> SortedNames(const std::wstring& start) {
        std::vector<Name> names;
        WIN32_FIND_DATAW found;
        const HANDLE search = FindFirstFileExW((start + L'*').c_str(), FindExInfoBasic, &found, FindExSearchNameMatch,
                                               nullptr, FIND_FIRST_EX_LARGE_FETCH);
        if (search == INVALID_HANDLE_VALUE) return names;
        do {
            const std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            names.push_back({ToUtf8(name), name, (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0});
            --mLeft;
        } while (mLeft > 0 && FindNextFileW(search, &found));
        FindClose(search);
        std::sort(names.begin(), names.end(), [](const Name& a, const Name& b) { return a.order < b.order; });
        return names;
    }

    const std::function<bool(const WalkEntry&)>& mVisit;
    const bool mSlashes;
    std::size_t mLeft;
    std::set<std::pair<DWORD, std::uint64_t>> mEntered;
};

}  // namespace

void WalkFolder(const zelcore::ustring& root, const std::function<bool(const WalkEntry&)>& visit) {
    std::wstring path = ToWide(root);
    if (!IsFullWidePath(path)) return;
    // Who wrote it with the one separator finds it so again: paths are compared by the letter.
    const bool slashes = path.find(L'\\') == std::wstring::npos;
    std::replace(path.begin(), path.end(), L'/', L'\\');
    while (path.size() > 1 && path.back() == L'\\' && path[path.size() - 2] != L':') path.pop_back();
    const std::wstring name = path.substr(path.rfind(L'\\') + 1);
    const std::wstring canonical = WalkedPlace(path).GetFinalPath();
    if (!canonical.empty()) Walk(visit, slashes).VisitPath(canonical, name, false, 0);
}

bool PathExists(const zelcore::ustring& path) {
    const std::wstring wide = ToWide(path);
    if (wide.find(L'\0') != std::wstring::npos) return false;
    if (GetFileAttributesW(wide.c_str()) != INVALID_FILE_ATTRIBUTES) return true;
    // A share that does not answer, or a folder that may not be read now, does not mean that the file is gone.
    const DWORD error = GetLastError();
    return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND && error != ERROR_INVALID_NAME &&
           error != ERROR_DIRECTORY;
}

}  // namespace zelaudiofilterhost
