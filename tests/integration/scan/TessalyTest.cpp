#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <set>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelcore/Serialization.h>

#include "ProcessList.h"
#include "ScanFixture.h"
#include "support/InstalledPlugins.h"
#include "support/Program.h"
#include "support/WaitFor.h"

namespace zeltests {

using testing::HasSubstr;
using testing::IsEmpty;
namespace serialization = zelcore::serialization;

/// The host application as a user calls it.
class TessalyTest : public ScanFixture {
protected:
    TessalyTest() { std::filesystem::create_directory(mPlugins.Path("plugins")); }

    /// Copies test plug-ins into the folder to scan and gives them other names.
    void Add(const std::string& plugin, const std::string& name) {
        std::filesystem::copy(TestPlugin(plugin), mPlugins.Path("plugins/" + name),
                              std::filesystem::copy_options::recursive);
    }

    std::string GetFolder() const { return mPlugins.Path("plugins"); }

    std::unique_ptr<Program> Start(std::vector<std::string> arguments, const std::string& profile = "profile",
                                   const std::string& binary = std::string(ZEL_BIN_DIR) + "/tessaly") {
        arguments.insert(arguments.begin(), binary);
        return std::make_unique<Program>(
            mOutput.GetPath(), arguments,
            std::vector<std::string>{"XDG_CONFIG_HOME=" + mProfiles.Path(profile), "ZEL_SCANNER_TIMEOUT_SECONDS=2",
                                     "ZEL_SCANNER_MEMORY_MB=300", "VST_PATH=", "VST3_PATH="});
    }

    std::string GetProfileFile(const std::string& name, const std::string& profile = "profile") const {
        return mProfiles.Path(profile + "/tessaly/" + name);
    }
    std::string GetCatalogueName() const { return std::filesystem::path(GetCataloguePath()).filename().string(); }

    static serialization::Array Parse(const std::string& json) {
        return boost::any_cast<serialization::Array>(serialization::FromJson(json));
    }

    static std::string Get(const serialization::Variant& row, const std::string& key) {
        zelcore::utf8string text;
        EXPECT_TRUE(serialization::GetInObject(row, key, text)) << key;
        return std::string(text.data(), text.size());
    }

    /// File names of the rows with that status.
    static std::set<std::string> GetNames(const std::string& json, const std::string& status) {
        std::set<std::string> names;
        for (const serialization::Variant& row : Parse(json))
            if (Get(row, "status") == status) names.insert(std::filesystem::path(Get(row, "path")).filename().string());
        return names;
    }

    ThrowAwayFolder mPlugins;
    ThrowAwayFolder mProfiles;
    ThrowAwayFolder mOutput;
};

TEST_F(TessalyTest, ScanPrintsTheCatalogueAndListPrintsItAgain) {
    Add("vst/good/zel_gain.so", "gain.so");
    Add("vst/good/zel_synth.so", "synth.so");
    Add("vst3/good/ZelGain3.vst3", "ZelGain3.vst3");
    Add("notplugins/text.so", "text.so");
    for (const std::string mode : {"--in-process", "--rescan"}) {
        const auto scan = Start({"scan", mode, "--json", GetFolder()}, mode);
        ASSERT_EQ(0, scan->Wait()) << scan->GetErrors();
        EXPECT_EQ((std::set<std::string>{"gain.so", "synth.so", "ZelGain3.vst3"}),
                  GetNames(scan->GetOutput(), "working"));
        EXPECT_EQ((std::set<std::string>{"text.so"}), GetNames(scan->GetOutput(), "failed"));
        const auto list = Start({"list", "--json"}, mode);
        EXPECT_EQ(0, list->Wait());
        EXPECT_EQ(scan->GetOutput(), list->GetOutput());
        EXPECT_THAT(scan->GetErrors(), HasSubstr("[4/4]"));
    }
}

TEST_F(TessalyTest, InstalledPluginsAreAllFoundAndAlikeInBothModes) {
    const std::set<std::string> installed = FindInstalledPlugins();
    if (installed.empty()) GTEST_SKIP() << "no plug-in packages are installed in the system's folders";
    const auto separate = Start({"scan", "--json"}, "separate");
    ASSERT_EQ(0, separate->Wait()) << separate->GetErrors();
    // Some of these leak, which a sanitizer would count against the process that loaded them.
    const char* const given = std::getenv("ASAN_OPTIONS");
    const std::string options = given ? given : "";
    setenv("ASAN_OPTIONS", (options + ":detect_leaks=0").c_str(), 1);
    const auto inside = Start({"scan", "--in-process", "--json"}, "inside");
    setenv("ASAN_OPTIONS", options.c_str(), 1);
    ASSERT_EQ(0, inside->Wait()) << inside->GetErrors();
    EXPECT_EQ(separate->GetOutput(), inside->GetOutput());

    std::set<std::string> found;
    for (const serialization::Variant& row : Parse(separate->GetOutput())) found.insert(Get(row, "path"));
    EXPECT_EQ(installed, found);
    EXPECT_THAT(GetNames(separate->GetOutput(), "banned"), IsEmpty());
    EXPECT_GT(GetNames(separate->GetOutput(), "working").size(), installed.size() * 9 / 10);
}

TEST_F(TessalyTest, JsonTellsOfEachPluginWhatAProgramNeeds) {
    Add("vst/good/zel_shell.so", "shell.so");
    const auto scan = Start({"scan", "--json", GetFolder()});
    ASSERT_EQ(0, scan->Wait()) << scan->GetErrors();
    const serialization::Array rows = Parse(scan->GetOutput());
    ASSERT_EQ(1u, rows.size());
    EXPECT_EQ("VST", Get(rows[0], "format"));
    EXPECT_EQ(GetFolder() + "/shell.so", Get(rows[0], "path"));
    EXPECT_EQ("", Get(rows[0], "subcomponent"));
    EXPECT_FALSE(Get(rows[0], "name").empty());
    EXPECT_FALSE(Get(rows[0], "vendor").empty());
    EXPECT_EQ("working", Get(rows[0], "status"));
    EXPECT_EQ("effect and instrument", Get(rows[0], "kind"));
    bool enabled = false;
    EXPECT_TRUE(serialization::GetInObject(rows[0], "enabled", enabled));
    EXPECT_TRUE(enabled);
    const auto ids = serialization::GetVariantInObject(rows[0], "componentIds");
    ASSERT_TRUE(ids);
    EXPECT_EQ(3u, boost::any_cast<serialization::Array>(*ids).size());
}

TEST_F(TessalyTest, DeadlyPluginsAreBannedWithTheirReasonsAndTheRestIsThere) {
    Add("vst/bad/crash_on_load.so", "a_crash.so");
    Add("vst/good/zel_gain.so", "b_gain.so");
    Add("vst/bad/hang_when_opened.so", "c_hang.so");
    Add("vst/good/zel_synth.so", "d_synth.so");
    const auto scan = Start({"scan", GetFolder()});
    EXPECT_EQ(0, scan->Wait()) << scan->GetErrors();
    EXPECT_THAT(scan->GetOutput(), HasSubstr("2 working, 0 not working, 2 banned"));
    EXPECT_THAT(scan->GetOutput(), HasSubstr("did not answer within the time limit"));
    const auto list = Start({"list", "--json"});
    EXPECT_EQ(0, list->Wait());
    EXPECT_EQ((std::set<std::string>{"a_crash.so", "c_hang.so"}), GetNames(list->GetOutput(), "banned"));
}

TEST_F(TessalyTest, CrashInThisProcessLeavesTheMarkerAndAReadableCatalogue) {
    Add("vst/good/zel_gain.so", "a.so");
    Add("vst/good/zel_synth.so", "b.so");
    Add("vst/bad/crash_when_described.so", "c.so");
    Add("vst/good/zel_gain.so", "d.so");
    const auto scan = Start({"scan", "--in-process", GetFolder()});
    EXPECT_NE(0, scan->Wait());
    EXPECT_EQ("2||" + GetFolder() + "/c.so", ReadFile(GetProfileFile("ScannedPluginPath.txt")));
    const auto list = Start({"list", "--json"});
    EXPECT_EQ(0, list->Wait());
    EXPECT_THAT(list->GetErrors(), IsEmpty());
    EXPECT_EQ((std::set<std::string>{"a.so", "b.so"}), GetNames(list->GetOutput(), "working"));
}

TEST_F(TessalyTest, KilledInTheMiddleOfAScanInThisProcessLeavesTheMarkerAndAReadableCatalogue) {
    Add("vst/good/zel_gain.so", "a.so");
    Add("vst/bad/hang_when_opened.so", "b.so");
    const auto scan = Start({"scan", "--in-process", GetFolder()});
    const std::string marker = GetProfileFile("ScannedPluginPath.txt");
    ASSERT_TRUE(WaitFor([&] { return Exists(marker) && ReadFile(marker) == "2||" + GetFolder() + "/b.so"; }));
    // The catalogue is saved behind the marker.
    ASSERT_TRUE(WaitFor([&] {
        const std::string catalogue = GetProfileFile(GetCatalogueName());
        return Exists(catalogue) && ReadFile(catalogue).find("/a.so") != std::string::npos;
    }));
    scan->Signal(SIGKILL);
    EXPECT_EQ(-SIGKILL, scan->Wait());
    EXPECT_EQ("2||" + GetFolder() + "/b.so", ReadFile(marker));
    const auto list = Start({"list", "--json"});
    EXPECT_EQ(0, list->Wait());
    EXPECT_EQ((std::set<std::string>{"a.so"}), GetNames(list->GetOutput(), "working"));
}

TEST_F(TessalyTest, KilledInTheMiddleOfASeparateScanLeavesNoProcessAndNoMarker) {
    Add("vst/bad/hang_when_opened.so", "a.so");
    const auto scan = Start({"scan", GetFolder()});
    ASSERT_TRUE(WaitFor([&] { return scan->GetErrors().find("a.so") != std::string::npos; }));
    scan->Signal(SIGKILL);
    scan->Wait();
    EXPECT_TRUE(WaitFor([] { return ProcessList::CountScanners() == 0; }));
    EXPECT_FALSE(Exists(GetProfileFile("ScannedPluginPath.txt")));
}

TEST_F(TessalyTest, InterruptCancelsTheScanAndTellsThatItIsNotComplete) {
    Add("vst/good/zel_gain.so", "a.so");
    Add("vst/bad/hang_when_opened.so", "b.so");
    Add("vst/good/zel_synth.so", "c.so");
    const auto scan = Start({"scan", GetFolder()});
    ASSERT_TRUE(WaitFor([&] { return scan->GetErrors().find("b.so") != std::string::npos; }));
    scan->Signal(SIGINT);
    EXPECT_EQ(3, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("1 plug-in; scan again to go on"));
    EXPECT_EQ(0u, ProcessList::CountScanners());
    const auto again = Start({"scan", GetFolder()});
    EXPECT_EQ(0, again->Wait()) << again->GetErrors();
    EXPECT_THAT(again->GetOutput(), HasSubstr("2 working"));
}

TEST_F(TessalyTest, TwoHostsAtOnceBothGetEverythingAndBanNobody) {
    for (const char* name : {"a.so", "b.so", "c.so", "d.so", "e.so", "f.so"}) Add("vst/good/zel_gain.so", name);
    for (int round = 0; round < 5; ++round) {
        const auto one = Start({"scan", "--rescan", "--json", GetFolder()}, "one");
        const auto two = Start({"scan", "--rescan", "--json", GetFolder()}, "two");
        EXPECT_EQ(0, one->Wait()) << one->GetErrors();
        EXPECT_EQ(0, two->Wait()) << two->GetErrors();
        EXPECT_EQ(one->GetOutput(), two->GetOutput());
        EXPECT_EQ(6u, GetNames(one->GetOutput(), "working").size());
        EXPECT_THAT(GetNames(one->GetOutput(), "banned"), IsEmpty());
    }
}

TEST_F(TessalyTest, TwoHostsOfOneProfileTakeTurns) {
    for (const char* name : {"a.so", "b.so", "c.so", "d.so", "e.so", "f.so"}) Add("vst/good/zel_gain.so", name);
    for (int round = 0; round < 5; ++round) {
        const auto one = Start({"scan", "--rescan", "--json", GetFolder()});
        const auto two = Start({"scan", "--rescan", "--json", GetFolder()});
        EXPECT_EQ(0, one->Wait()) << one->GetErrors();
        EXPECT_EQ(0, two->Wait()) << two->GetErrors();
        EXPECT_EQ(6u, GetNames(one->GetOutput(), "working").size());
        EXPECT_EQ(6u, GetNames(two->GetOutput(), "working").size());
        EXPECT_THAT(GetNames(one->GetOutput(), "banned"), IsEmpty());
    }
}

TEST_F(TessalyTest, NextScanLooksOnlyAtWhatIsNewOrChanged) {
    Add("vst/good/zel_gain.so", "a.so");
    Add("notplugins/text.so", "b.so");
    EXPECT_EQ(0, Start({"scan", GetFolder()})->Wait());
    Add("vst/good/zel_synth.so", "c.so");
    std::filesystem::last_write_time(GetFolder() + "/b.so", std::filesystem::file_time_type::clock::now());
    const auto scan = Start({"scan", GetFolder()});
    EXPECT_EQ(0, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("[2/2]"));
    EXPECT_THAT(scan->GetErrors(), testing::Not(HasSubstr("/a.so")));
}

TEST_F(TessalyTest, DamagedFilesAreKeptAsideAndTheUserIsTold) {
    std::filesystem::create_directories(mProfiles.Path("profile/tessaly"));
    const std::string bans = std::filesystem::path(GetBansPath()).filename().string();
    WriteFile(GetProfileFile(GetCatalogueName()), "\x7f\x45garbage");
    WriteFile(GetProfileFile(bans), "<bannedplugins");
    const auto list = Start({"list"});
    EXPECT_EQ(0, list->Wait());
    EXPECT_THAT(list->GetErrors(), HasSubstr("kept"));
    EXPECT_EQ("\x7f\x45garbage", ReadFile(GetProfileFile(GetCatalogueName()) + ".unreadable"));
    EXPECT_EQ("<bannedplugins", ReadFile(GetProfileFile(bans) + ".unreadable"));
}

TEST_F(TessalyTest, CommandLinesThatMakeNoSenseAreExplained) {
    const std::vector<std::vector<std::string>> wrong = {
        {"dance"}, {"scan", "--fast"}, {"list", "--rescan"}, {"list", "folder"}, {"scan", "/no/such/folder"}};
    for (const auto& arguments : wrong) {
        const auto program = Start(arguments);
        EXPECT_EQ(2, program->Wait());
        EXPECT_THAT(program->GetErrors(), HasSubstr("Usage: tessaly"));
    }
    EXPECT_EQ(0, Start({"--help"})->Wait());
}

TEST_F(TessalyTest, WithoutADisplayTheWindowSaysWhereToReadOn) {
    const auto program = Start({});
    EXPECT_EQ(1, program->Wait());
    EXPECT_THAT(program->GetErrors(), HasSubstr("no display to show a window on. 'tessaly --help'"));
}

TEST_F(TessalyTest, MissingScannerProgramIsTold) {
    std::filesystem::copy_file(std::string(ZEL_BIN_DIR) + "/tessaly", mPlugins.Path("tessaly"));
    const auto scan = Start({"scan", GetFolder()}, "profile", mPlugins.Path("tessaly"));
    EXPECT_EQ(1, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("the scanner program is missing"));
}

TEST_F(TessalyTest, PreferencesThatCannotBeWrittenAreTold) {
    WriteFile(mProfiles.Path("file"), "");
    const auto scan = Start({"scan", GetFolder()}, "file");
    EXPECT_EQ(1, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("tessaly: could not"));
}

TEST_F(TessalyTest, NamesThatHoldTerminalControlsCannotDisturbTheTerminal) {
    Add("vst/good/zel_gain.so", "a\033[2Jb.so");
    const auto scan = Start({"scan", GetFolder()});
    EXPECT_EQ(0, scan->Wait());
    EXPECT_EQ(std::string::npos, scan->GetOutput().find('\033'));
    EXPECT_EQ(std::string::npos, scan->GetErrors().find('\033'));
}

}  // namespace zeltests
