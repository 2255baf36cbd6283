#include <cerrno>
#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <zelcore/Utf.h>

#include "FolderWalk.h"

namespace zelaudiofilterhost {

namespace {

std::string ToBytes(const zelcore::ustring& text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(text);
    return std::string(bytes.data(), bytes.size());
}

/// Converts a name of the file system; false when it is not valid UTF-8 and so could not be found again by its text.
bool ToText(const std::string& bytes, zelcore::ustring& text) {
    text = zelcore::utility::UTF8to16(bytes);
    return ToBytes(text) == bytes;
}

std::string Canonical(const std::string& path) {
    const std::unique_ptr<char, void (*)(void*)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::string(resolved.get()) : std::string();
}

std::string Join(const std::string& folder, const std::string& name) {
    return folder == "/" ? folder + name : folder + "/" + name;
}

std::int64_t Milliseconds(const timespec& time) {
    return std::int64_t(time.tv_sec) * 1000 + std::int64_t(time.tv_nsec) / 1000000;
}

class Walk {
public:
    explicit Walk(const std::function<bool(const WalkEntry&)>& visit) : mVisit(visit), mLeft(kMaxWalkEntries) {}

    /// `path` has no link in it but perhaps its last name.
    void VisitPath(const std::string& path, const std::string& name, int depth) {
        struct stat status;
        if (::lstat(path.c_str(), &status) != 0) return;
        std::string target = path;
        if (S_ISLNK(status.st_mode)) {
            target = Canonical(path);
            if (target.empty() || ::stat(target.c_str(), &status) != 0) return;
        }
        if (!S_ISDIR(status.st_mode) && !S_ISREG(status.st_mode)) return;

        WalkEntry entry;
        if (!ToText(target, entry.path) || !ToText(name, entry.name)) return;
        entry.isFolder = S_ISDIR(status.st_mode);
        entry.size = entry.isFolder ? 0 : static_cast<std::uint64_t>(status.st_size);
        entry.modificationTime = Milliseconds(status.st_mtim);
        if (!mVisit(entry) || !entry.isFolder || depth == kMaxWalkDepth) return;
        if (mEntered.emplace(status.st_dev, status.st_ino).second) VisitNamesIn(target, depth + 1);
    }

private:
    void VisitNamesIn(const std::string& folder, int depth) {
        for (const std::string& name : SortedNames(folder)) VisitPath(Join(folder, name), name, depth);
    }

    /// The folder is closed again before anything below it is visited, so that depth costs no file descriptors.
    std::vector<std::string> SortedNames(const std::string& folder) {
        std::vector<std::string> names;
        const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.c_str()), &::closedir);
        while (stream && mLeft > 0) {
            const dirent* const entry = ::readdir(stream.get());
            if (entry == nullptr) break;
            std::string name = entry->d_name;
            if (name == "." || name == "..") continue;
            names.push_back(std::move(name));
            --mLeft;
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    const std::function<bool(const WalkEntry&)>& mVisit;
    std::size_t mLeft;
    std::set<std::pair<dev_t, ino_t>> mEntered;
};

}  // namespace

void WalkFolder(const zelcore::ustring& root, const std::function<bool(const WalkEntry&)>& visit) {
    std::string path = ToBytes(root);
    // A NUL would cut the path short and so name another one.
    if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos) return;
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    const std::string canonical = Canonical(path);
    if (canonical.empty()) return;
    Walk(visit).VisitPath(canonical, path.substr(path.rfind('/') + 1), 0);
}

bool PathExists(const zelcore::ustring& path) {
    const std::string bytes = ToBytes(path);
    struct stat status;
    if (bytes.find('\0') != std::string::npos) return false;
    // A share that does not answer, or a folder that may not be read now, does not mean that the file is gone.
    return ::stat(bytes.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

}  // namespace zelaudiofilterhost
