#include <filesystem>

#include "InstalledPlugins.h"

namespace zeltests {

std::set<std::string> FindInstalledPlugins() {
    namespace fs = std::filesystem;
    std::set<std::string> paths;
    for (const std::string folder : {"/usr/lib/vst", "/usr/lib/lxvst", "/usr/lib/vst3"}) {
        const std::string ending = folder == "/usr/lib/vst3" ? ".vst3" : ".so";
        if (!fs::is_directory(folder)) continue;
        for (auto it = fs::recursive_directory_iterator(folder); it != fs::recursive_directory_iterator(); ++it) {
            if (it->path().extension() != ending) continue;
            paths.insert(fs::canonical(it->path()).string());
            if (ending == ".vst3") it.disable_recursion_pending();
        }
    }
    return paths;
}

bool IsInstalled(const std::string& path) { return std::filesystem::exists(path); }

std::vector<std::string> GetPluginVariables(const std::string&) { return {}; }

}  // namespace zeltests
