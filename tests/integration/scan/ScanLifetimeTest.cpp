#include <random>

#include <gmock/gmock.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>

#include "ProcessList.h"
#include "ScanLifetimeStage.h"

namespace zeltests {

using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhostui::AudioPluginScan;
using zelaudiofilterhostui::ExternalAudioPluginScan;

TEST_F(ScanLifetimeTest, StoppedAndDestroyedAtAnyMomentLeavesNothingBehind) {
    UseRealScanner();
    std::mt19937 random(1);
    for (int round = 0; round < GetRounds(); ++round) {
        {
            ExternalAudioPluginScan scan;
            ASSERT_TRUE(scan.Scan(mPreferences.GetFolder().UPath("catalogue.xml"),
                                  mPreferences.GetFolder().UPath("bans.xml"),
                                  mPreferences.GetFolder().UPath("permanent.xml"), GetPlugins(),
                                  [](const PluginLocator&, const zelcore::ustring&, int, int) {}));
            RunLoopFor(std::uniform_int_distribution<long>(0, 150000)(random));
            scan.Stop();
        }
        // What was posted for the scan runs, or is dropped, only now.
        RunLoopFor(1000);
        ASSERT_EQ(0u, ProcessList::CountScanners());
        ASSERT_FALSE(Exists(GetPath("catalogue.xml.scan")));
    }
}

TEST_F(ScanLifetimeTest, DestroyedWithoutAStopIsClean) {
    UseRealScanner();
    std::mt19937 random(3);
    for (int round = 0; round < GetRounds() / 4; ++round) {
        {
            ExternalAudioPluginScan scan;
            ASSERT_TRUE(scan.Scan(mPreferences.GetFolder().UPath("catalogue.xml"),
                                  mPreferences.GetFolder().UPath("bans.xml"),
                                  mPreferences.GetFolder().UPath("permanent.xml"), GetPlugins(),
                                  [](const PluginLocator&, const zelcore::ustring&, int, int) {}));
            RunLoopFor(std::uniform_int_distribution<long>(0, 100000)(random));
        }
        RunLoopFor(1000);
        // The scanner ends by itself when its connection goes; nobody has taken notice of it here.
        ProcessList::WaitForScanners();
        ASSERT_EQ(0u, ProcessList::CountScanners());
    }
}

TEST_F(ScanLifetimeTest, EndIsReportedOnceHoweverTheScanEnds) {
    UseRealScanner();
    std::mt19937 random(2);
    for (int round = 0; round < GetRounds() / 4; ++round) {
        int ends = 0;
        {
            ExternalAudioPluginScan scan;
            ASSERT_TRUE(scan.Scan(mPreferences.GetFolder().UPath("catalogue.xml"),
                                  mPreferences.GetFolder().UPath("bans.xml"),
                                  mPreferences.GetFolder().UPath("permanent.xml"), GetPlugins(),
                                  [&ends](const PluginLocator&, const zelcore::ustring&, int current, int total) {
                                      ends += current > total;
                                  }));
            RunLoopFor(std::uniform_int_distribution<long>(0, 400000)(random));
            scan.Stop();
        }
        RunLoopFor(1000);
        EXPECT_EQ(1, ends);
    }
}

}  // namespace zeltests
