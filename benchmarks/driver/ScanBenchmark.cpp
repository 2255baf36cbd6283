/// Measures scanning as a user meets it, each figure beside a bare one of the same run:
///   - all plug-ins of this machine's folders, in the scanner process and in this one, beside a program that only loads
///     and describes them one after the other (bare_scan), and, where Debian's Ardour is installed, beside its scanner
///     programs, a process for each plug-in as it starts them;
///   - how soon after the death of a scanner the next plug-in is loaded;
///   - the cost of one plug-in with a small and a large catalogue.
/// Prints one line a figure. Usage: scan_benchmark [ROUNDS]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/Dir.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>

#include "support/Table.h"

namespace {

using namespace zelaudiofilterhost;
using zelaudiofilterhostui::AudioPluginScan;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace fs = std::filesystem;

double Measure(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// A profile that goes with the program.
class Profile {
public:
    Profile() : mPath(fs::temp_directory_path() / ("scan_benchmark-" + std::to_string(std::rand()))) {
        fs::create_directories(mPath);
        zelcore::filesupport::Dir::SetPrefDir(zelcore::filesupport::Dir(UTF8to16(mPath.string())));
        Empty();
    }
    ~Profile() {
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;

    void Empty() const {
        const zelcore::filesupport::File none(UTF8to16((mPath / "none").string()));
        PluginModuleInfoManager::GetInstance().LoadConfiguration(none);
        BannedPluginManager::GetInstance().LoadConfiguration(none);
    }
    fs::path Path(const std::string& name) const { return mPath / name; }

private:
    fs::path mPath;
};

double Scan(const std::vector<PluginLocator>& locators, bool separateProcess) {
    return Measure([&] { AudioPluginScan(nullptr).ScanForPlugins(nullptr, locators, separateProcess); });
}

/// What bare_scan says of its own loop, in milliseconds: its last number.
double ScanBare(const std::string& list) {
    const std::string program =
        std::string(UTF16to8(zelcore::filesupport::Dir::AppDir().FullPath()).c_str()) + "/bare_scan";
    std::FILE* pipe = popen(("'" + program + "' '" + list + "' 2>/dev/null").c_str(), "r");
    if (!pipe) return 0;
    double milliseconds = 0;
    char line[4096];
    while (std::fgets(line, sizeof line, pipe)) {
        const char* const text = std::strstr(line, " milliseconds ");
        if (text) milliseconds = std::atof(text + std::strlen(" milliseconds "));
    }
    pclose(pipe);
    return milliseconds;
}

/// Where Debian puts Ardour's programs.
const fs::path kArdour = "/usr/lib/ardour7";

bool IsArdourInstalled() {
    return fs::exists(kArdour / "ardour-vst-scanner") && fs::exists(kArdour / "ardour-vst3-scanner");
}

/// The same plug-ins by Ardour's scanner programs. They keep what they find in the home folder, here a throw-away one.
double ScanByArdour(const Profile& profile, const std::vector<PluginLocator>& locators) {
    const std::string environment =
        "HOME='" + profile.Path("home").string() + "' LD_LIBRARY_PATH='" + kArdour.string() + "' timeout 60 ";
    return Measure([&] {
        for (const PluginLocator& locator : locators) {
            const bool isVst3 = locator.GetTechnologyType() == kTechnologyVST3;
            const std::string program = (kArdour / (isVst3 ? "ardour-vst3-scanner" : "ardour-vst-scanner")).string();
            const std::string path(UTF16to8(locator.GetPath()).c_str());
            // What it says of the plug-in is its own affair; a plug-in that it does not like takes its time too.
            if (std::system((environment + program + " -f -q '" + path + "' >/dev/null 2>&1").c_str()) == -1) return;
        }
    });
}

void CompareWithArdour(const Profile& profile, const std::vector<PluginLocator>& locators, double separate) {
    const std::string what = "scan " + std::to_string(locators.size()) + " plug-ins, scanner process";
    if (!IsArdourInstalled()) return zelbench::AddTableNote(what, "Ardour's scanner programs: not installed");
    const double ardour = ScanByArdour(profile, locators);
    std::printf("Ardour's scanner programs %8.1f ms  ratio %.3f\n", ardour, separate / ardour);
    zelbench::AddTableRow(what, "ms", separate, "Ardour 7's scanner programs", ardour);
}

void WriteList(const fs::path& path, const std::vector<PluginLocator>& locators) {
    std::ofstream stream(path);
    for (const PluginLocator& locator : locators) stream << UTF16to8(locator.ToString()) << '\n';
}

void MeasureMachine(const Profile& profile, int rounds) {
    std::vector<PluginLocator> removed;
    const std::vector<PluginLocator> all =
        PluginModuleInfoManager::GetInstance().CollectPotentialPlugins(false, removed);
    const std::string list = profile.Path("list").string();
    WriteList(list, all);
    std::vector<double> bare;
    std::vector<double> separate;
    std::vector<double> inside;
    ScanBare(list);  // so that the first round does not pay for the disk
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(ScanBare(list));
        separate.push_back(Scan(all, true));
        inside.push_back(Scan(all, false));
    }
    const auto& catalogue = PluginModuleInfoManager::GetInstance();
    std::printf("plug-ins of this machine: %zu, working %td\n", all.size(),
                catalogue.PluginInfoEnd() - catalogue.PluginInfoBegin());
    std::printf("bare loop                %9.1f ms\n", Median(bare));
    std::printf("scanner process          %9.1f ms  ratio %.3f\n", Median(separate), Median(separate) / Median(bare));
    std::printf("this process             %9.1f ms  ratio %.3f\n", Median(inside), Median(inside) / Median(bare));
    const std::string what = "scan " + std::to_string(all.size()) + " plug-ins, ";
    zelbench::AddTableRow(what + "scanner process", "ms", Median(separate), "bare load loop", Median(bare));
    zelbench::AddTableRow(what + "in the application", "ms", Median(inside), "bare load loop", Median(bare));
    CompareWithArdour(profile, all, Median(separate));
}

/// Copies of one test plug-in, each a file of its own.
std::vector<PluginLocator> MakeCopies(const Profile& profile, const std::string& plugin, const std::string& name,
                                      int count) {
    std::vector<PluginLocator> locators;
    for (int i = 0; i < count; ++i) {
        const fs::path path = profile.Path(name + std::to_string(i) + ".so");
        fs::copy_file(fs::path(ZEL_TESTPLUGINS_DIR) / plugin, path, fs::copy_options::overwrite_existing);
        locators.emplace_back(kTechnologyVST, UTF8to16(path.string()));
    }
    return locators;
}

void MeasureRestart(const Profile& profile) {
    constexpr int kCount = 30;
    const std::vector<PluginLocator> crashing = MakeCopies(profile, "vst/bad/crash_when_described.so", "crash", kCount);
    // From one death to the next: a whole start, connection, hand-over and load of the next plug-in.
    const double total = Scan(crashing, true);
    std::printf("from the death of a scanner to the next plug-in's death: %.1f ms\n", total / kCount);
    profile.Empty();
}

void FillCatalogue(int count) {
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    PluginComponentInfo component;
    component.componentId = UTF8to16("VST-00000001");
    component.name = UTF8to16("A plug-in of usual name");
    component.vendor = UTF8to16("A vendor");
    component.version = UTF8to16("1.2.3");
    component.inputBuses.resize(1);
    component.outputBuses.resize(1);
    for (int i = 0; i < count; ++i)
        catalogue.AddPluginInfo(new PluginModuleInfo(
            PluginLocator(kTechnologyVST, UTF8to16("/usr/lib/vst/made/plugin" + std::to_string(i) + ".so")),
            zelcore::ustring(), {}, {component}));
}

void MeasureGrowth(const Profile& profile, bool separateProcess, int rounds) {
    constexpr int kCount = 100;
    const std::vector<PluginLocator> good = MakeCopies(profile, "vst/good/zel_gain.so", "good", kCount);
    std::vector<double> perPlugin;
    for (const int size : {100, 10000}) {
        profile.Empty();
        FillCatalogue(size);
        Scan(good, separateProcess);
        std::vector<double> values;
        for (int round = 0; round < rounds; ++round) values.push_back(Scan(good, separateProcess) / kCount);
        perPlugin.push_back(Median(values));
    }
    std::printf("one small plug-in, %s: %.3f ms with 100 entries, %.3f ms with 10,000, ratio %.3f\n",
                separateProcess ? "scanner process" : "this process", perPlugin[0], perPlugin[1],
                perPlugin[1] / perPlugin[0]);
    zelbench::AddTableRow(
        std::string("scan one more of 10000, ") + (separateProcess ? "scanner process" : "in the application"), "ms",
        perPlugin[1], "one more of 100", perPlugin[0]);
    profile.Empty();
}

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 3;
    std::srand(static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count()));
    const zelui::Application application(argc, argv);
    const Profile profile;
    MeasureMachine(profile, rounds);
    profile.Empty();
    MeasureRestart(profile);
    for (const bool separateProcess : {false, true}) MeasureGrowth(profile, separateProcess, rounds);
    return 0;
}
