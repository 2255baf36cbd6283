#include "Workplace.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "Seclusion.h"
#include "support/Program.h"

namespace zelfaults {

namespace fs = std::filesystem;

namespace {

constexpr unsigned long kSmallDisk = 512 * 1024;
constexpr unsigned long kSharedMemory = 64 * 1024 * 1024;

std::set<std::string> ListNames(const fs::path& folder) {
    std::set<std::string> names;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) names.insert(entry.path().filename().string());
    return names;
}

}  // namespace

Workplace::Workplace(bool isSecluded) {
    const std::vector<std::pair<std::string, std::string>> good = {
        {"vst/good/zel_gain.so", "a_known.so"},       {"vst/good/zel_synth.so", "b.so"},
        {"vst/good/zel_shell.so", "c_known_off.so"},  {"notplugins/text.so", "d_text.so"},
        {"vst3/good/ZelGain3.vst3", "ZelGain3.vst3"}, {"vst/good/zel_gain.so", "f.so"}};
    AddPlugins(GetGoodFolder(), good);
    AddPlugins(GetDeadlyFolder(), good);
    AddPlugins(GetDeadlyFolder(),
               {{"vst/bad/crash_when_described.so", "b2_deadly.so"}, {"vst/bad/exit_when_opened.so", "e_deadly.so"}});
    fs::create_directory(mFolder.Path("disk"));
    // Others of this machine use the shared memory too.
    if (isSecluded) Seclusion::MountSmallDisk("/dev/shm", kSharedMemory);
    mHasSmallDisk = isSecluded && Seclusion::MountSmallDisk(mFolder.Path("disk"), kSmallDisk);
}

void Workplace::AddPlugins(const std::string& folder,
                           const std::vector<std::pair<std::string, std::string>>& plugins) const {
    fs::create_directories(folder);
    for (const auto& [plugin, name] : plugins)
        fs::copy(fs::path(ZEL_TESTPLUGINS_DIR) / plugin, fs::path(folder) / name, fs::copy_options::recursive);
}

bool Workplace::IsDeadly(const std::string& path) { return path.ends_with("_deadly.so"); }

bool Workplace::IsGood(const std::string& path) { return !IsDeadly(path) && !path.ends_with("_text.so"); }

std::vector<std::string> Workplace::ListPlugins(const std::string& folder) {
    std::vector<std::string> plugins;
    for (const std::string& name : ListNames(folder)) plugins.push_back((fs::path(folder) / name).string());
    return plugins;
}

std::string Workplace::MakeProfile(bool small) {
    for (const char* const name : {"profile", "disk/profile"}) {
        std::error_code ignored;
        fs::permissions(mFolder.Path(name), fs::perms::owner_all, ignored);
        fs::remove_all(mFolder.Path(name));
    }
    const std::string profile = mFolder.Path(small && mHasSmallDisk ? "disk/profile" : "profile");
    fs::copy(GetBaseProfile(), profile);
    return profile;
}

bool Workplace::Prepare() {
    fs::create_directory(GetBaseProfile());
    zeltests::Program host(MakeRoundFolder(),
                           {ZEL_BIN_DIR "/fault_host", GetBaseProfile(), "prepare", GetGoodFolder(), GetDeadlyFolder()},
                           {"QT_QPA_PLATFORM=offscreen"});
    const int code = host.Wait();
    if (code != 0) std::cerr << "the profile cannot be made: " << code << ' ' << host.GetOutput() << host.GetErrors();
    return code == 0;
}

HostReport Workplace::ReadBase() {
    zeltests::Program host(MakeRoundFolder(), {ZEL_BIN_DIR "/fault_host", MakeProfile(false), "look", GetGoodFolder()},
                           {"QT_QPA_PLATFORM=offscreen"});
    host.Wait();
    return HostReport(host.GetOutput());
}

std::string Workplace::MakeRoundFolder() {
    const std::string folder = mFolder.Path("round");
    fs::remove_all(folder);
    fs::create_directories(folder + "/tmp");
    return folder;
}

std::vector<std::string> Workplace::FindLeftovers(const std::string& profile) const {
    const std::set<std::string> known = ListNames(GetBaseProfile());
    std::vector<std::string> leftovers;
    for (const std::string& name : ListNames(profile))
        if (!known.contains(name)) leftovers.push_back(name);
    return leftovers;
}

std::set<std::string> Workplace::ListSharedMemory() { return ListNames("/dev/shm"); }

}  // namespace zelfaults
