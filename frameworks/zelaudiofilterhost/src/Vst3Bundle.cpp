#include "Vst3Bundle.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include <zelaudiofilterhost/PluginDescription.h>

#include "PluginCall.h"
#include "Vst3BundleNames.h"

namespace zelaudiofilterhost {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaxNamedFolders = 8;

/// What the bundle has instead, for the user to see what was downloaded by mistake.
std::string NameOtherPlatforms(const fs::path& contents) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(contents, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const bool isPlatform = name.ends_with("-linux") || name.ends_with("-win") || name == "MacOS";
        if (isPlatform && names.size() < kMaxNamedFolders) names.push_back(PrintableText(name));
    }
    std::sort(names.begin(), names.end());
    std::string list;
    for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
    return list.empty() ? list : " (it has " + list + ")";
}

/// The library of a bundle that was renamed after it was made; empty when there is none, or no telling which.
std::string FindOnlyLibrary(const fs::path& folder) {
    std::string library;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->path().extension() != GetVst3LibraryEnding()) continue;
        if (!library.empty()) return std::string();
        library = entry->path().string();
    }
    return library;
}

}  // namespace

std::string FindVst3Library(const std::string& path) {
    std::error_code error;
    if (!fs::is_directory(path, error)) return path;
    fs::path bundle = path;
    if (!bundle.has_filename()) bundle = bundle.parent_path();
    const fs::path contents = bundle / "Contents";
    const fs::path library = contents / GetVst3PlatformFolder() / (bundle.stem().string() + GetVst3LibraryEnding());
    if (fs::exists(library, error)) return library.string();
    const std::string onlyLibrary = FindOnlyLibrary(library.parent_path());
    if (!onlyLibrary.empty()) return onlyLibrary;
    if (!fs::is_directory(contents, error)) throw PluginLoadError("is a folder, but no VST3 bundle");
    throw PluginLoadError("no binary for this platform in the bundle" + NameOtherPlatforms(contents));
}

}  // namespace zelaudiofilterhost
