#include <algorithm>
#include <filesystem>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <QApplication>
#include <QEvent>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

#include "ProcessList.h"
#include "ScanFixture.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhostui::AudioPluginScan;
namespace serialization = zelcore::serialization;

/// The client against a scanner that follows a script.
class SeparateProcessScanTest : public ScanFixture {
protected:
    static constexpr const char* kHello = "listen\nvalue null\nvalue null\n";
    /// The scanner's word that nothing is left; it has reached `count` plug-ins.
    static std::string End(int count) {
        return "value {\"locator\": \"\", \"subcomponent\": \"\", \"progress\": " + std::to_string(count) +
               ", \"total\": " + std::to_string(count) + ", \"continue\": false}\n";
    }

    /// The scanner's word that `locator` is next.
    static std::string Next(const PluginLocator& locator, int progress, int total, const std::string& text = "") {
        boost::any info = serialization::Object();
        serialization::SetInObject(info, "locator", zelcore::utility::UTF16to8(locator.ToString()));
        serialization::SetInObject(info, "subcomponent", zelcore::utf8string(text.c_str()));
        serialization::SetInObject(info, "progress", boost::int32_t(progress));
        serialization::SetInObject(info, "total", boost::int32_t(total));
        serialization::SetInObject(info, "continue", true);
        return "value " + serialization::ToJson(info) + "\n";
    }

    /// The description of a working plug-in at `path`.
    static std::string Describe(const std::string& path = "/p/one.so") {
        zelaudiofilterhost::PluginComponentInfo component;
        component.componentId = zelcore::utility::AsciiToUTF16("VST-00000001");
        component.name = zelcore::utility::AsciiToUTF16("Plug");
        auto& catalogue = zelaudiofilterhost::PluginModuleInfoManager::GetInstance();
        catalogue.AddPluginInfo(
            new zelaudiofilterhost::PluginModuleInfo(Vst(path), zelcore::ustring(), {}, {component}));
        const std::string text = catalogue.GetConfigurationText({Vst(path)});
        catalogue.RemovePluginLocators({Vst(path)});
        return text;
    }

    /// The reply after which the result file holds the description of a working plug-in at `path`.
    static std::string Result(const std::string& path) {
        const std::string text = Describe(path);
        return "result " + serialization::ToJson(zelcore::utf8string(text.data(), text.size())) + "\n";
    }

    void Scan(const std::vector<PluginLocator>& locators) {
        AudioPluginScan scan(nullptr);
        scan.ScanForPlugins(nullptr, locators, true);
    }

    std::vector<std::string> GetMethods() const {
        std::vector<std::string> methods;
        for (const std::string& line : GetRequests()) {
            const auto request = boost::make_shared<boost::any>(serialization::FromJson(line));
            zelcore::utf8string method;
            EXPECT_TRUE(serialization::GetInObject(request, "method", method));
            methods.push_back(std::string(method.data(), method.size()));
        }
        return methods;
    }

    const PluginLocator mOne = Vst("/p/one.so");
    const PluginLocator mTwo = Vst("/p/two.so");
    const PluginLocator mThree = Vst("/p/three.so");
};

TEST_F(SeparateProcessScanTest, ConversationHasTheAgreedMethodsArgumentsAndOrder) {
    UseScriptedScanner({kHello + Next(mOne, 1, 1) + Result("/p/one.so") + End(1)});
    Scan({mOne});
    const std::string prefix = "com.morva.zelaudiofilterscan.";
    EXPECT_THAT(GetMethods(), ElementsAre(prefix + "Connect", prefix + "BeginScanForPlugins", prefix + "GetScanInfo",
                                          prefix + "ScanOneEntity", prefix + "GetScanInfo"));
    const std::vector<std::string> requests = GetRequests();
    ASSERT_EQ(5u, requests.size());
    const auto parameters = [&](std::size_t index) {
        const auto request = boost::make_shared<boost::any>(serialization::FromJson(requests[index]));
        return serialization::ToJson(*serialization::GetVariantInObject(request, "params"));
    };
    const std::string bans = GetBansPath();
    const std::string permanent = GetPath("UnsupportedAudioPlugIns.xml");
    EXPECT_EQ(
        "[\"" + GetCataloguePath() + "\",\"" + bans + "\",\"" + permanent + "\",\"" + GetCataloguePath() + ".scan\"]",
        parameters(0));
    EXPECT_EQ("[[\"2||/p/one.so\"]]", parameters(1));
    EXPECT_EQ("[]", parameters(2));
    EXPECT_EQ("[]", parameters(3));
    EXPECT_NE(std::string::npos, requests[0].find("ClientUnknown"));
    EXPECT_EQ(1u, CountLaunches());
}

TEST_F(SeparateProcessScanTest, EmptyListIsSentAsAnEmptyListAndEndsTheScan) {
    UseScriptedScanner({std::string(kHello) + End(0)});
    Scan({});
    ASSERT_EQ(3u, GetRequests().size());
    EXPECT_NE(std::string::npos, GetRequests()[1].find("\"params\":[[]]"));
    EXPECT_FALSE(FindDialog());
    EXPECT_EQ(1, mChangedSignals);
    EXPECT_TRUE(Exists(GetCataloguePath()));
}

TEST_F(SeparateProcessScanTest, ResultsReachTheCatalogueAndItsFile) {
    UseScriptedScanner(
        {kHello + Next(mOne, 1, 2) + Result("/p/one.so") + Next(mTwo, 2, 2) + Result("/p/two.so") + End(2)});
    Scan({mOne, mTwo});
    EXPECT_THAT(GetCatalogued(), ElementsAre("/p/one.so", "/p/two.so"));
    EXPECT_THAT(GetCataloguedInFile(), ElementsAre("/p/one.so", "/p/two.so"));
    EXPECT_FALSE(Exists(GetCataloguePath() + ".scan"));
}

TEST_F(SeparateProcessScanTest, NameAndTextAreJoinedWithNothingBetween) {
    const PluginLocator echo = Vst("Echo");
    UseScriptedScanner({kHello + Next(echo, 1, 1, "Delay") + "value null\n" + End(1)});
    Scan({echo});
    ASSERT_EQ(1u, mShown.size());
    EXPECT_EQ("EchoDelay", mShown[0].text);
}

TEST_F(SeparateProcessScanTest, CrashOnTheSecondOfThreeBansItAndAnotherScannerTakesTheThird) {
    UseScriptedScanner({kHello + Next(mOne, 1, 3) + Result("/p/one.so") + Next(mTwo, 2, 3) + "crash\n",
                        kHello + Next(mThree, 1, 1) + Result("/p/three.so") + End(1)});
    Scan({mOne, mTwo, mThree});
    EXPECT_EQ(2u, CountLaunches());
    EXPECT_THAT(GetBanned(), ElementsAre("/p/two.so"));
    EXPECT_THAT(GetCatalogued(), ElementsAre("/p/one.so", "/p/three.so"));
    ASSERT_EQ(3u, mShown.size());
    for (std::size_t i = 0; i < mShown.size(); ++i) {
        // A report tells the position of the moment at which it is shown, which may be ahead of its plug-in.
        EXPECT_GE(mShown[i].current, i + 1);
        EXPECT_LE(mShown[i].current, 3u);
        EXPECT_GE(mShown[i].current, i ? mShown[i - 1].current : 1);
        EXPECT_EQ(3u, mShown[i].total);
    }
    EXPECT_NE(std::string::npos, GetRequests()[7].find("[[\"2||/p/three.so\"]]"));
    EXPECT_NE(std::string::npos, ToBytes(zelaudiofilterhost::BannedPluginManager::GetInstance().GetReason(mTwo))
                                     .find(ProcessList::GetCrashName()));
    EXPECT_THAT(GetBannedInFile(), ElementsAre("/p/two.so"));
}

TEST_F(SeparateProcessScanTest, CrashOnTheLastPluginEndsTheScanWithoutARestart) {
    UseScriptedScanner({kHello + Next(mOne, 1, 1) + "crash\n"});
    Scan({mOne});
    EXPECT_EQ(1u, CountLaunches());
    EXPECT_THAT(GetBannedInFile(), ElementsAre("/p/one.so"));
    EXPECT_FALSE(FindDialog());
}

TEST_F(SeparateProcessScanTest, CancelEndsTheScannerAndBansWhatItWasWorkingOnAndStartsNothing) {
    UseScriptedScanner({kHello + Next(mOne, 1, 2) + "hang\n"});
    WhenTrue([this] { return mShown.size() == 1; }, [] { ClickCancel(); });
    Scan({mOne, mTwo});
    EXPECT_EQ(1u, CountLaunches());
    EXPECT_THAT(GetBannedInFile(), ElementsAre("/p/one.so"));
    EXPECT_EQ(1u, mShown.size());
    EXPECT_FALSE(FindDialog());
    EXPECT_EQ(1, mChangedSignals);
}

TEST_F(SeparateProcessScanTest, CancelBetweenTwoPluginsBansNobody) {
    UseScriptedScanner({kHello + Next(mOne, 1, 2) + Result("/p/one.so") + "hang\n"});
    // The question after the result: the first plug-in is done with, and the second not yet named.
    WhenTrue([this] { return GetRequests().size() == 5; }, [] { ClickCancel(); });
    Scan({mOne, mTwo});
    EXPECT_THAT(GetBanned(), IsEmpty());
    EXPECT_THAT(GetCataloguedInFile(), ElementsAre("/p/one.so"));
}

TEST_F(SeparateProcessScanTest, CrashBetweenTwoPluginsBansTheOneThatWasScannedLast) {
    UseScriptedScanner({kHello + Next(mOne, 1, 2) + Result("/p/one.so") + "crash\n",
                        kHello + Next(mTwo, 1, 1) + Result("/p/two.so") + End(1)});
    Scan({mOne, mTwo});
    EXPECT_THAT(GetBannedInFile(), ElementsAre("/p/one.so"));
    EXPECT_EQ(2u, CountLaunches());
}

TEST_F(SeparateProcessScanTest, CancelBeforeAnyPluginBansNobody) {
    UseScriptedScanner({"listen\nhang\n"});
    WhenTrue([this] { return !GetRequests().empty(); }, [] { ClickCancel(); });
    Scan({mOne, mTwo});
    EXPECT_EQ(1u, CountLaunches());
    EXPECT_THAT(GetBanned(), IsEmpty());
}

TEST_F(SeparateProcessScanTest, ResultsThatArrivedBeforeACancelAreKeptAndSaved) {
    UseScriptedScanner({kHello + Next(mOne, 1, 2) + Result("/p/one.so") + Next(mTwo, 2, 2) + "hang\n"});
    WhenTrue([this] { return mShown.size() == 2; }, [] { ClickCancel(); });
    Scan({mOne, mTwo});
    EXPECT_THAT(GetCataloguedInFile(), ElementsAre("/p/one.so"));
}

TEST_F(SeparateProcessScanTest, ReplyWithoutContinueEndsTheScan) {
    UseScriptedScanner({std::string(kHello) + "value {\"locator\": \"\", \"progress\": 0, \"total\": 1}\n"});
    Scan({mOne});
    EXPECT_EQ(3u, GetRequests().size());
    EXPECT_THAT(GetBanned(), IsEmpty());
}

TEST_F(SeparateProcessScanTest, RepliesThatMakeNoSenseEndTheScanAndBanNobody) {
    for (const char* nonsense :
         {"value null\n", "value 7\n", "value []\n", "value \"continue\"\n",
          "value {\"continue\": \"yes\", \"progress\": \"many\", \"locator\": 3}\n", "value {\"continue\": 1}\n"}) {
        UseScriptedScanner({std::string(kHello) + nonsense});
        Scan({mOne});
        EXPECT_THAT(GetBanned(), IsEmpty()) << nonsense;
        EXPECT_FALSE(FindDialog());
    }
}

TEST_F(SeparateProcessScanTest, ErrorReplyToAnyRequestEndsTheScanWithoutARetry) {
    for (const std::string& script :
         {std::string("listen\nerror -1 no\n"), std::string("listen\nvalue null\nerror -1 no\n"),
          std::string(kHello) + "error -1 no\n", kHello + Next(mOne, 1, 2) + "error -32603 disk full\n"}) {
        UseScriptedScanner({script});
        const std::size_t before = CountLaunches();
        Scan({mOne});
        EXPECT_EQ(before + 1, CountLaunches());
        EXPECT_THAT(GetBanned(), IsEmpty());
    }
}

TEST_F(SeparateProcessScanTest, MalformedBytesFromTheScannerEndOrRestartTheScanWithoutHarm) {
    for (const char* bytes : {"ffffffff41414141", "02000000fffe", "0000000000000000"}) {
        UseScriptedScanner({"listen\nbytes " + std::string(bytes) + "\nhang\n"});
        Scan({mOne});
        EXPECT_THAT(GetBanned(), IsEmpty()) << bytes;
        EXPECT_FALSE(FindDialog());
    }
}

TEST_F(SeparateProcessScanTest, ReplyThatNeverEndsWaitsForTheUser) {
    UseScriptedScanner({"listen\nbytes 0500000041414141\nhang\n"});
    WhenTrue([this] { return !GetRequests().empty(); }, [] { ClickCancel(); });
    Scan({mOne});
    EXPECT_EQ(1u, CountLaunches());
    EXPECT_THAT(GetBanned(), IsEmpty());
}

TEST_F(SeparateProcessScanTest, RepliesInSingleBytesAndTwiceAreHarmless) {
    UseScriptedScanner(
        {"listen\nbytewise\nvalue null\nvalue null\n" + Next(mOne, 1, 1) + Result("/p/one.so") + End(1)});
    Scan({mOne});
    EXPECT_THAT(GetCatalogued(), ElementsAre("/p/one.so"));
    UseScriptedScanner({"listen\ntwice null\nvalue null\n" + std::string(End(0))});
    Scan({mOne});
    EXPECT_THAT(GetBanned(), IsEmpty());
}

TEST_F(SeparateProcessScanTest, LeftoverResultFileIsNeverReadAndNeverLeft) {
    WriteFile(GetCataloguePath() + ".scan", "leftover");
    UseScriptedScanner({kHello + Next(mOne, 1, 1) + "value null\n" + End(1)});
    Scan({mOne});
    EXPECT_THAT(GetCatalogued(), IsEmpty());
    EXPECT_FALSE(Exists(GetCataloguePath() + ".scan"));
}

TEST_F(SeparateProcessScanTest, HostileResultFilesAddNothingAndEndNothing) {
    const std::string whole = Describe();
    for (const std::string& text :
         {std::string(), std::string("not xml"), std::string("<audioplugins"), std::string("<other/>"),
          std::string(3, '\0'), whole.substr(0, whole.size() / 2), whole.substr(0, whole.size() - 3)}) {
        const std::string json = serialization::ToJson(zelcore::utf8string(text.data(), text.size()));
        UseScriptedScanner(
            {kHello + Next(mOne, 1, 2) + "result " + json + "\n" + Next(mTwo, 2, 2) + Result("/p/two.so") + End(2)});
        Scan({mOne, mTwo});
        EXPECT_THAT(GetCatalogued(), ElementsAre("/p/two.so")) << text;
    }
}

TEST_F(SeparateProcessScanTest, MissingScannerMakesTheScanANoOpApartFromTheCleanUp) {
    WriteFile(GetMarkerPath(), "2||/left.so");
    Scan({mOne});
    EXPECT_THAT(mShown, IsEmpty());
    EXPECT_FALSE(Exists(GetMarkerPath()));
    EXPECT_TRUE(Exists(GetCataloguePath()));
    EXPECT_EQ(1, mChangedSignals);
}

TEST_F(SeparateProcessScanTest, ScannerThatCannotBeStartedMakesTheScanANoOp) {
    WriteFile(mAppFolder.Path("zelaudiofilterscan.exe"), "no program");
    Scan({mOne});
    EXPECT_THAT(mShown, IsEmpty());
    EXPECT_EQ(1, mChangedSignals);
}

TEST_F(SeparateProcessScanTest, MarkerOfAnEarlierCrashGoesAndIsNeverWritten) {
    WriteFile(GetMarkerPath(), "2||/left.so");
    bool rewritten = false;
    UseScriptedScanner({kHello + Next(mOne, 1, 1) + "value null\n" + End(1)});
    WhenTrue([this] { return !mShown.empty(); }, [&] { rewritten = ReadFile(GetMarkerPath()) != "2||/left.so"; });
    Scan({mOne});
    EXPECT_FALSE(rewritten);
    EXPECT_FALSE(Exists(GetMarkerPath()));
}

TEST_F(SeparateProcessScanTest, ScannerThatStartsLateIsWaitedFor) {
    UseScriptedScanner({"late 0.5\n" + std::string(kHello) + End(0)});
    Scan({mOne});
    EXPECT_EQ(3u, GetRequests().size());
}

TEST_F(SeparateProcessScanTest, ScannerThatEndsAtOnceIsStartedAFewTimesAndBansNobody) {
    UseScriptedScanner({"exit 1\n"});
    Scan({mOne, mTwo});
    EXPECT_GE(CountLaunches(), 1u);
    EXPECT_LE(CountLaunches(), 3u);
    EXPECT_THAT(GetBanned(), IsEmpty());
    EXPECT_FALSE(FindDialog());
}

TEST_F(SeparateProcessScanTest, ScannerThatDropsEveryConnectionIsNotStartedOverAndOver) {
    UseScriptedScanner({"listen\nclose\n"});
    Scan({mOne, mTwo});
    EXPECT_EQ(3u, CountLaunches());
    EXPECT_THAT(GetBanned(), IsEmpty());
}

TEST_F(SeparateProcessScanTest, ScannerThatNeverReachesAPluginIsNotStartedOverAndOver) {
    UseScriptedScanner({std::string(kHello) + Next(Vst("/somebody/elses.so"), 1, 2) + "crash\n"});
    Scan({mOne, mTwo});
    EXPECT_EQ(3u, CountLaunches());
}

TEST_F(SeparateProcessScanTest, PositionAboveTheTotalIsNotTheEndOfTheScan) {
    UseScriptedScanner(
        {kHello + Next(mOne, 7, 2) + Result("/p/one.so") + Next(mTwo, 8, 0) + Result("/p/two.so") + End(2)});
    Scan({mOne, mTwo});
    EXPECT_THAT(GetCatalogued(), ElementsAre("/p/one.so", "/p/two.so"));
    EXPECT_THAT(GetBanned(), IsEmpty());
    for (const Shown& shown : mShown) EXPECT_EQ(2u, shown.total);
}

TEST_F(SeparateProcessScanTest, ReasonOfABanIsThatOfTheScannerWhichDiedOfIt) {
    UseScriptedScanner({kHello + Next(mOne, 1, 2) + "crash\n", "listen\nhang\n"});
    WhenTrue([this] { return CountLaunches() == 2; }, [] { ClickCancel(); });
    Scan({mOne, mTwo});
    EXPECT_THAT(GetBanned(), ElementsAre("/p/one.so"));
    EXPECT_THAT(ToBytes(zelaudiofilterhost::BannedPluginManager::GetInstance().GetReason(mOne)),
                testing::HasSubstr(ProcessList::GetCrashName()));
}

TEST_F(SeparateProcessScanTest, DialogIsGoneWhenTheScanIsOver) {
    UseScriptedScanner({std::string(kHello) + End(0)});
    const auto countWidgets = [] {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return QApplication::allWidgets().size();
    };
    AudioPluginScan scan(nullptr);
    const auto before = countWidgets();
    scan.ScanForPlugins(nullptr, {mOne}, true);
    EXPECT_EQ(before, countWidgets());
}

TEST_F(SeparateProcessScanTest, RestartThatFailsLeavesTheDialogUntilTheUserClosesIt) {
    UseScriptedScanner({kHello + Next(mOne, 1, 2) + "wait go\ncrash\n"});
    WhenTrue([this] { return mShown.size() == 1; },
             [this] {
                 RemoveScanner();
                 Release("go");
             });
    bool stillOpen = false;
    WhenTrue([] { return !GetBanned().empty(); },
             [&] {
                 stillOpen = FindDialog() != nullptr;
                 ClickCancel();
             });
    Scan({mOne, mTwo});
    EXPECT_TRUE(stillOpen);
    EXPECT_EQ(1u, CountLaunches());
    EXPECT_THAT(GetBannedInFile(), ElementsAre("/p/one.so"));
}

TEST_F(SeparateProcessScanTest, BanListThatCannotBeWrittenDoesNotEndTheScan) {
    std::filesystem::create_directory(GetBansPath());
    UseScriptedScanner(
        {kHello + Next(mOne, 1, 2) + "crash\n", kHello + Next(mTwo, 1, 1) + Result("/p/two.so") + End(1)});
    Scan({mOne, mTwo});
    EXPECT_THAT(GetBanned(), ElementsAre("/p/one.so"));
    EXPECT_THAT(GetCatalogued(), ElementsAre("/p/two.so"));
}

TEST_F(SeparateProcessScanTest, OneObjectCanScanTwice) {
    UseScriptedScanner({kHello + Next(mOne, 1, 1) + Result("/p/one.so") + End(1),
                        kHello + Next(mTwo, 1, 1) + Result("/p/two.so") + End(1)});
    AudioPluginScan scan(nullptr);
    scan.ScanForPlugins(nullptr, {mOne}, true);
    scan.ScanForPlugins(nullptr, {mTwo}, true);
    EXPECT_THAT(GetCatalogued(), ElementsAre("/p/one.so", "/p/two.so"));
    EXPECT_EQ(2, mChangedSignals);
}

}  // namespace zeltests
