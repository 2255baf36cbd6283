#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include <zelcore/Utf.h>

#include "PluginFolders.h"

namespace zelaudiofilterhost {

namespace {

/// The conventions of one technology. `variables` and `homeFolders` and `systemFolders` end with a null pointer.
struct FolderConventions {
    const char* variables[3];
    const char* homeFolders[3];
    const char* systemFolders[5];
};

const FolderConventions kVstConventions = {
    {"VST_PATH", "LXVST_PATH", nullptr},
    {".vst", ".lxvst", nullptr},
    {"/usr/lib/vst", "/usr/local/lib/vst", "/usr/lib/lxvst", "/usr/local/lib/lxvst", nullptr}};

const FolderConventions kVst3Conventions = {{"VST3_PATH", nullptr, nullptr},
                                            {".vst3", nullptr, nullptr},
                                            {"/usr/lib/vst3", "/usr/local/lib/vst3", nullptr, nullptr, nullptr}};

std::string HomeFolder() {
    const char* const home = std::getenv("HOME");
    if (home != nullptr && home[0] == '/') return home;
    const passwd* const user = ::getpwuid(::getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : std::string();
}

/// Collects folders and passes over relative ones, those whose name is no text, and second names of one that is there.
class FolderList {
public:
    void Add(const std::string& path) {
        if (path.empty() || path.front() != '/') return;
        const std::string_view trimmed = WithoutSlashes(path);
        const ustring text = zelcore::utility::UTF8to16(trimmed);
        const zelcore::utf8string back = zelcore::utility::UTF16to8(text);
        if (std::string_view(back.data(), back.size()) != trimmed) return;
        std::error_code error;
        std::filesystem::path place = std::filesystem::weakly_canonical(trimmed, error);
        if (error) place = std::filesystem::path(trimmed).lexically_normal();
        if (mPlaces.insert(place.native()).second) mFolders.push_back(text);
    }

    void AddVariable(const char* name) {
        const char* const value = std::getenv(name);
        if (value == nullptr) return;
        std::string_view rest = value;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find(':'), rest.size());
            Add(std::string(rest.substr(0, end)));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }

    const std::vector<ustring>& Get() const { return mFolders; }

private:
    static std::string_view WithoutSlashes(std::string_view path) {
        while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
        return path;
    }

    std::vector<ustring> mFolders;
    std::set<std::string> mPlaces;
};

std::vector<ustring> FoldersOf(const FolderConventions& conventions) {
    FolderList list;
    for (const char* const* name = conventions.variables; *name != nullptr; ++name) list.AddVariable(*name);
    const std::string home = HomeFolder();
    if (!home.empty()) {
        for (const char* const* name = conventions.homeFolders; *name != nullptr; ++name) list.Add(home + "/" + *name);
    }
    for (const char* const* path = conventions.systemFolders; *path != nullptr; ++path) list.Add(*path);
    return list.Get();
}

}  // namespace

std::vector<ustring> DefaultPluginFolders(TechnologyType technology) {
    switch (technology) {
        case kTechnologyVST:
            return FoldersOf(kVstConventions);
        case kTechnologyVST3:
            return FoldersOf(kVst3Conventions);
        default:
            return std::vector<ustring>();
    }
}

ustring VstModuleExtension() { return zelcore::utility::AsciiToUTF16(".so"); }

bool IsFullPath(const ustring& path) { return !path.empty() && path.front() == '/'; }

bool IsSameName(const ustring& left, const ustring& right) { return left == right; }

}  // namespace zelaudiofilterhost
