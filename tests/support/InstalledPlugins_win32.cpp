#include <cstdlib>
#include <filesystem>

#include "InstalledPlugins.h"

namespace zeltests {

namespace {

void Find(const std::filesystem::path& folder, const std::string& ending, std::set<std::string>& paths) {
    namespace fs = std::filesystem;
    std::error_code error;
    for (auto it = fs::recursive_directory_iterator(folder, error); it != fs::recursive_directory_iterator(); ++it) {
        if (it->path().extension() != ending) continue;
        paths.insert(fs::canonical(it->path()).string());
        if (ending == ".vst3") it.disable_recursion_pending();
    }
}

}  // namespace

std::set<std::string> FindInstalledPlugins() {
    std::set<std::string> paths;
    const char* const programs = std::getenv("ProgramFiles");
    const char* const common = std::getenv("CommonProgramFiles");
    if (programs != nullptr) Find(std::filesystem::path(programs) / "VstPlugins", ".dll", paths);
    if (programs != nullptr) Find(std::filesystem::path(programs) / "Steinberg" / "VstPlugins", ".dll", paths);
    if (common != nullptr) Find(std::filesystem::path(common) / "VST3", ".vst3", paths);
    return paths;
}

// There are no packages; a path of another system may be there all the same, with plug-ins that are not for this one.
bool IsInstalled(const std::string&) { return false; }

std::vector<std::string> GetPluginVariables(const std::string& testPlugins) {
    return {"VST_PATH=" + testPlugins + "/vst/good", "VST3_PATH=" + testPlugins + "/vst3/good"};
}

}  // namespace zeltests
