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
#include "support/Environment.h"
#include "support/InstalledPlugins.h"
#include "support/WaitFor.h"
#include "TessalyStage.h"

namespace zeltests {

using testing::HasSubstr;
using testing::IsEmpty;
namespace serialization = zelcore::serialization;

typedef TessalyStage TessalyTest;

TEST_F(TessalyTest, ScanPrintsTheCatalogueAndListPrintsItAgain) {
    Add("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    Add("vst/good/zel_synth" ZEL_MODULE, "synth" ZEL_MODULE);
    Add("vst3/good/ZelGain3.vst3", "ZelGain3.vst3");
    Add("notplugins/text" ZEL_MODULE, "text" ZEL_MODULE);
    for (const std::string mode : {"--in-process", "--rescan"}) {
        const auto scan = Start({"scan", mode, "--json", GetFolder()}, mode);
        ASSERT_EQ(0, scan->Wait()) << scan->GetErrors();
        EXPECT_EQ((std::set<std::string>{"gain" ZEL_MODULE, "synth" ZEL_MODULE, "ZelGain3.vst3"}),
                  GetNames(scan->GetOutput(), "working"));
        EXPECT_EQ((std::set<std::string>{"text" ZEL_MODULE}), GetNames(scan->GetOutput(), "failed"));
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
    SetVariable("ASAN_OPTIONS", (options + ":detect_leaks=0").c_str());
    const auto inside = Start({"scan", "--in-process", "--json"}, "inside");
    SetVariable("ASAN_OPTIONS", options.c_str());
    ASSERT_EQ(0, inside->Wait()) << inside->GetErrors();
    EXPECT_EQ(separate->GetOutput(), inside->GetOutput());

    std::set<std::string> found;
    for (const serialization::Variant& row : Parse(separate->GetOutput())) found.insert(Get(row, "path"));
    EXPECT_EQ(installed, found);
    EXPECT_THAT(GetNames(separate->GetOutput(), "banned"), IsEmpty());
    EXPECT_GT(GetNames(separate->GetOutput(), "working").size(), installed.size() * 9 / 10);
}

TEST_F(TessalyTest, JsonTellsOfEachPluginWhatAProgramNeeds) {
    Add("vst/good/zel_shell" ZEL_MODULE, "shell" ZEL_MODULE);
    const auto scan = Start({"scan", "--json", GetFolder()});
    ASSERT_EQ(0, scan->Wait()) << scan->GetErrors();
    const serialization::Array rows = Parse(scan->GetOutput());
    ASSERT_EQ(1u, rows.size());
    EXPECT_EQ("VST", Get(rows[0], "format"));
    EXPECT_EQ(FullName(GetFolder() + "/shell" ZEL_MODULE), Get(rows[0], "path"));
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
    Add("vst/bad/crash_in_entry" ZEL_MODULE, "a_crash" ZEL_MODULE);
    Add("vst/good/zel_gain" ZEL_MODULE, "b_gain" ZEL_MODULE);
    Add("vst/bad/hang_when_opened" ZEL_MODULE, "c_hang" ZEL_MODULE);
    Add("vst/good/zel_synth" ZEL_MODULE, "d_synth" ZEL_MODULE);
    const auto scan = Start({"scan", GetFolder()});
    EXPECT_EQ(0, scan->Wait()) << scan->GetErrors();
    EXPECT_THAT(scan->GetOutput(), HasSubstr("2 working, 0 not working, 2 banned"));
    EXPECT_THAT(scan->GetOutput(), HasSubstr("did not answer within the time limit"));
    const auto list = Start({"list", "--json"});
    EXPECT_EQ(0, list->Wait());
    EXPECT_EQ((std::set<std::string>{"a_crash" ZEL_MODULE, "c_hang" ZEL_MODULE}),
              GetNames(list->GetOutput(), "banned"));
}

TEST_F(TessalyTest, CrashInThisProcessLeavesTheMarkerAndAReadableCatalogue) {
    Add("vst/good/zel_gain" ZEL_MODULE, "a" ZEL_MODULE);
    Add("vst/good/zel_synth" ZEL_MODULE, "b" ZEL_MODULE);
    Add("vst/bad/crash_when_described" ZEL_MODULE, "c" ZEL_MODULE);
    Add("vst/good/zel_gain" ZEL_MODULE, "d" ZEL_MODULE);
    const auto scan = Start({"scan", "--in-process", GetFolder()});
    EXPECT_NE(0, scan->Wait());
    EXPECT_EQ(GetMark("c" ZEL_MODULE), ReadFile(GetProfileFile("ScannedPluginPath.txt")));
    const auto list = Start({"list", "--json"});
    EXPECT_EQ(0, list->Wait());
    EXPECT_THAT(list->GetErrors(), IsEmpty());
    EXPECT_EQ((std::set<std::string>{"a" ZEL_MODULE, "b" ZEL_MODULE}), GetNames(list->GetOutput(), "working"));
}

TEST_F(TessalyTest, KilledInTheMiddleOfAScanInThisProcessLeavesTheMarkerAndAReadableCatalogue) {
    Add("vst/good/zel_gain" ZEL_MODULE, "a" ZEL_MODULE);
    Add("vst/bad/hang_when_opened" ZEL_MODULE, "b" ZEL_MODULE);
    const auto scan = Start({"scan", "--in-process", GetFolder()});
    const std::string marker = GetProfileFile("ScannedPluginPath.txt");
    ASSERT_TRUE(WaitFor([&] { return Exists(marker) && ReadFile(marker) == GetMark("b" ZEL_MODULE); }));
    // The catalogue is saved behind the marker.
    ASSERT_TRUE(WaitFor([&] {
        const std::string catalogue = GetProfileFile(GetCatalogueName());
        return Exists(catalogue) && ReadFile(catalogue).find("a" ZEL_MODULE) != std::string::npos;
    }));
    scan->Signal(zeltests::Program::kKill);
    EXPECT_EQ(-zeltests::Program::kKill, scan->Wait());
    EXPECT_EQ(GetMark("b" ZEL_MODULE), ReadFile(marker));
    const auto list = Start({"list", "--json"});
    EXPECT_EQ(0, list->Wait());
    EXPECT_EQ((std::set<std::string>{"a" ZEL_MODULE}), GetNames(list->GetOutput(), "working"));
}

TEST_F(TessalyTest, KilledInTheMiddleOfASeparateScanLeavesNoProcessAndNoMarker) {
    Add("vst/bad/hang_when_opened" ZEL_MODULE, "a" ZEL_MODULE);
    const auto scan = Start({"scan", GetFolder()});
    ASSERT_TRUE(WaitFor([&] { return scan->GetErrors().find("a" ZEL_MODULE) != std::string::npos; }));
    scan->Signal(zeltests::Program::kKill);
    scan->Wait();
    EXPECT_TRUE(WaitFor([] { return ProcessList::CountScanners() == 0; }));
    EXPECT_FALSE(Exists(GetProfileFile("ScannedPluginPath.txt")));
}

TEST_F(TessalyTest, InterruptCancelsTheScanAndTellsThatItIsNotComplete) {
    if (!zeltests::Program::CanSignal()) GTEST_SKIP() << "there is no console here";
    Add("vst/good/zel_gain" ZEL_MODULE, "a" ZEL_MODULE);
    Add("vst/bad/hang_when_opened" ZEL_MODULE, "b" ZEL_MODULE);
    Add("vst/good/zel_synth" ZEL_MODULE, "c" ZEL_MODULE);
    const auto scan = Start({"scan", GetFolder()});
    ASSERT_TRUE(WaitFor([&] { return scan->GetErrors().find("b" ZEL_MODULE) != std::string::npos; }));
    scan->Signal(SIGINT);
    EXPECT_EQ(3, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("1 plug-in; scan again to go on"));
    EXPECT_EQ(0u, ProcessList::CountScanners());
    const auto again = Start({"scan", GetFolder()});
    EXPECT_EQ(0, again->Wait()) << again->GetErrors();
    EXPECT_THAT(again->GetOutput(), HasSubstr("2 working"));
}

TEST_F(TessalyTest, TwoHostsAtOnceBothGetEverythingAndBanNobody) {
    for (const char* name :
         {"a" ZEL_MODULE, "b" ZEL_MODULE, "c" ZEL_MODULE, "d" ZEL_MODULE, "e" ZEL_MODULE, "f" ZEL_MODULE})
        Add("vst/good/zel_gain" ZEL_MODULE, name);
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
    for (const char* name :
         {"a" ZEL_MODULE, "b" ZEL_MODULE, "c" ZEL_MODULE, "d" ZEL_MODULE, "e" ZEL_MODULE, "f" ZEL_MODULE})
        Add("vst/good/zel_gain" ZEL_MODULE, name);
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
    Add("vst/good/zel_gain" ZEL_MODULE, "a" ZEL_MODULE);
    Add("notplugins/text" ZEL_MODULE, "b" ZEL_MODULE);
    EXPECT_EQ(0, Start({"scan", GetFolder()})->Wait());
    Add("vst/good/zel_synth" ZEL_MODULE, "c" ZEL_MODULE);
    std::filesystem::last_write_time(GetFolder() + "/b" ZEL_MODULE, std::filesystem::file_time_type::clock::now());
    const auto scan = Start({"scan", GetFolder()});
    EXPECT_EQ(0, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("[2/2]"));
    EXPECT_THAT(scan->GetErrors(), testing::Not(HasSubstr("a" ZEL_MODULE)));
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

TEST_F(TessalyTest, PreferencesThatCannotBeWrittenAreTold) {
    WriteFile(mProfiles.Path("file"), "");
    const auto scan = Start({"scan", GetFolder()}, "file");
    EXPECT_EQ(1, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("tessaly: could not"));
}

}  // namespace zeltests
