#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BusesForTest.h"
#include "RoutedFilter.h"

using namespace zelaudiofilterhost;
using namespace zelmediatypes;
using namespace zeltests;

namespace {

std::string BestFit(const AudioFilterBusList& buses, const std::string& track) {
    return MapText(AudioFilter::BuildBestFitChannelMap(buses, Layout(track)));
}

struct Fit {
    const char* effect;
    const char* track;
    const char* map;
};

void ExpectFits(std::initializer_list<Fit> fits) {
    for (const Fit& fit : fits) {
        EXPECT_EQ(BestFit({Main(fit.effect)}, fit.track), fit.map) << fit.effect << " in " << fit.track;
    }
}

/// The map of the inputs after they were connected with a side-chain by themselves, for a track of stereo.
std::string AutoConnected(const AudioFilterBusList& inputs, const std::string& sideChain, const std::string& before,
                          bool replaceExisting) {
    const RoutedFilterPtr filter = MakeRouted(inputs, {Main("stereo")});
    EXPECT_TRUE(filter->SetTargetFormat(Layout("stereo"), Main(sideChain)));
    filter->SetChannelMap(Map(before), AudioFilter::kInput);
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kInput)), before);
    filter->AutoConnectSideChainChannels(replaceExisting);
    return MapText(filter->GetChannelMap(AudioFilter::kInput));
}

}  // namespace

TEST(ChannelMapRulesTest, ChannelsGoWhereTheTrackHasTheSameLabel) {
    ExpectFits({{"stereo", "stereo", "0 1"},
                {"stereo", "5.1", "0 1"},
                {"5.1", "stereo", "0 1 - - - -"},
                {"5.1", "5.0", "0 1 2 - 3 4"},
                {"5.0", "5.1", "0 1 2 4 5"},
                {"quad", "5.1", "0 1 4 5"},
                {"5.1", "7.1", "0 1 2 3 4 5"},
                {"7.1", "5.1", "0 1 2 3 4 5 - -"},
                {"6.1", "7.1", "0 1 2 3 4 5 -"},
                {"7.1.4", "7.1.2", "0 1 2 3 4 5 6 7 8 9 - -"},
                {"L R C Lfe Lr Rr Ls Rs", "7.1", "0 1 2 3 6 7 4 5"},
                {"R L", "stereo", "1 0"},
                {"Lfe2", "5.1", "-"}});
}

TEST(ChannelMapRulesTest, AnyTwoUsualLayoutsAreConnectedInEachLabelThatBothHaveAndInNoneTwice) {
    for (const std::string_view effectName : GetChannelLayoutNames()) {
        for (const std::string_view trackName : GetChannelLayoutNames()) {
            // Mono has rules of its own.
            if (effectName == "mono" || trackName == "mono") continue;
            const AudioChannelLayout effect = MakeChannelLayoutForName(effectName);
            const AudioChannelLayout track = MakeChannelLayoutForName(trackName);
            const ChannelMap map = AudioFilter::BuildBestFitChannelMap({{zelcore::ustring(), effect}}, track);
            ASSERT_EQ(map.size(), effect.size());
            for (std::size_t i = 0; i < effect.size(); ++i) {
                EXPECT_EQ(map.at(static_cast<int>(i)), FindChannel(track, effect[i].label))
                    << effectName << " in " << trackName << ", channel " << i;
            }
        }
    }
}

TEST(ChannelMapRulesTest, MonoAndCenterAreOnePlace) {
    ExpectFits({{"mono", "mono", "0"},
                {"mono", "3.0", "2"},
                {"mono", "5.1", "2"},
                {"mono", "7.1.4", "2"},
                {"C", "mono", "0"},
                {"3.0", "mono", "- - 0"},
                {"5.1", "mono", "- - 0 - - -"}});
}

TEST(ChannelMapRulesTest, LeftAndRightShareAMonoTrack) {
    ExpectFits({{"stereo", "mono", "0 0"}, {"quad", "mono", "0 0 - -"}, {"L R Lfe", "mono", "0 0 -"}});
    EXPECT_EQ(BestFit({Main("stereo"), Main("stereo")}, "mono"), "0 0 - -") << "the first main bus alone";
    EXPECT_EQ(BestFit({Aux("stereo"), Main("stereo")}, "mono"), "- - 0 0");
}

TEST(ChannelMapRulesTest, WhatHasNoPlaceOfItsOwnGoesByPosition) {
    ExpectFits({{"mono", "stereo", "0"},
                {"mono", "quad", "0"},
                {"2", "stereo", "0 1"},
                {"2", "5.1", "0 1"},
                {"16", "5.1", "0 1 2 3 4 5 - - - - - - - - - -"},
                {"stereo", "16", "0 1"},
                {"5.1", "4", "0 1 2 3 - -"},
                {"4", "4", "0 1 2 3"},
                {"2", "mono", "0 -"},
                {"- L", "stereo", "- 0"},
                {"L -", "stereo", "0 1"},
                {"Ls Rs", "stereo", "- -"}});
}

TEST(ChannelMapRulesTest, AuxiliaryChannelsAreNotConnectedAndDoNotCount) {
    EXPECT_EQ(BestFit({Main("stereo"), Aux("stereo")}, "stereo"), "0 1 - -");
    EXPECT_EQ(BestFit({Main("1"), Aux("1"), Main("1")}, "16"), "0 - 1");
    EXPECT_EQ(BestFit({Aux("stereo"), Main("stereo")}, "5.1"), "- - 0 1");
    EXPECT_EQ(BestFit({Aux("stereo")}, "stereo"), "- -");
}

TEST(ChannelMapRulesTest, NoChannelOfTheTrackIsGivenToTwoBuses) {
    EXPECT_EQ(BestFit({Main("stereo"), Main("stereo")}, "stereo"), "0 1 - -");
    EXPECT_EQ(BestFit({Main("stereo"), Main("stereo")}, "4"), "0 1 2 3");
    EXPECT_EQ(BestFit({Main("mono"), Main("mono")}, "stereo"), "0 1");
    EXPECT_EQ(BestFit({Main("mono"), Main("mono")}, "mono"), "0 -");
    EXPECT_EQ(BestFit({Main("stereo"), Main("C"), Main("Lfe"), Main("Ls Rs")}, "5.1"), "0 1 2 3 4 5");
}

TEST(ChannelMapRulesTest, NothingIsConnectedWithNothing) {
    EXPECT_EQ(BestFit({}, "stereo"), "");
    EXPECT_EQ(BestFit({Main("stereo")}, ""), "- -");
    EXPECT_EQ(BestFit({Main(""), Main("stereo")}, "stereo"), "0 1");
}

TEST(ChannelMapRulesTest, ASideChainIsConnectedByLabelThenByPosition) {
    const AudioFilterBusList inputs = {Main("stereo"), Aux("stereo")};
    EXPECT_EQ(AutoConnected(inputs, "stereo", "0 1 - -", false), "0 1 2 3");
    EXPECT_EQ(AutoConnected(inputs, "R L", "0 1 - -", false), "0 1 3 2");
    EXPECT_EQ(AutoConnected(inputs, "2", "0 1 - -", false), "0 1 2 3");
    EXPECT_EQ(AutoConnected(inputs, "5.1", "0 1 - -", false), "0 1 2 3");
    EXPECT_EQ(AutoConnected(inputs, "Ls Rs", "0 1 - -", false), "0 1 - -");
    EXPECT_EQ(AutoConnected({Main("stereo"), Aux("mono")}, "stereo", "0 1 -", false), "0 1 2");
    EXPECT_EQ(AutoConnected({Main("stereo"), Aux("mono")}, "5.1", "0 1 -", false), "0 1 4");
}

TEST(ChannelMapRulesTest, OneChannelOfSideChainFeedsAllThatListen) {
    EXPECT_EQ(AutoConnected({Main("stereo"), Aux("stereo")}, "mono", "0 1 - -", false), "0 1 2 2");
    EXPECT_EQ(AutoConnected({Aux("stereo"), Main("stereo"), Aux("5.1")}, "Ls", "- - 0 1 - - - - - -", false),
              "2 2 0 1 2 2 2 2 2 2");
}

TEST(ChannelMapRulesTest, ExistingConnectionsAreKeptOrConnectedAnew) {
    const AudioFilterBusList inputs = {Main("stereo"), Aux("stereo")};
    EXPECT_EQ(AutoConnected(inputs, "stereo", "1 0 3 -", false), "1 0 3 3");
    EXPECT_EQ(AutoConnected(inputs, "stereo", "1 0 0 -", false), "1 0 0 3");
    EXPECT_EQ(AutoConnected(inputs, "stereo", "1 0 3 2", true), "1 0 2 3");
    EXPECT_EQ(AutoConnected(inputs, "stereo", "- - 0 1", true), "- - 2 3");
}

TEST(ChannelMapRulesTest, WithoutASideChainConnectionsAreKeptOrGivenUp) {
    const AudioFilterBusList inputs = {Main("stereo"), Aux("stereo")};
    EXPECT_EQ(AutoConnected(inputs, "", "0 1 0 -", false), "0 1 0 -");
    EXPECT_EQ(AutoConnected(inputs, "", "0 1 0 1", true), "0 1 - -");
    EXPECT_EQ(AutoConnected({Main("stereo")}, "stereo", "1 0", true), "1 0") << "an effect that does not listen";
}
