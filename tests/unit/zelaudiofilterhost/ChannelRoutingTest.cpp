#include <limits>
#include <stdexcept>

#include <boost/bind/bind.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BusesForTest.h"
#include "RoutedFilter.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int kFarthest = std::numeric_limits<int>::max();

std::string Inputs(const RoutedFilterPtr& filter) { return MapText(filter->GetChannelMap(AudioFilter::kInput)); }
std::string Outputs(const RoutedFilterPtr& filter) { return MapText(filter->GetChannelMap(AudioFilter::kOutput)); }

RoutedFilterPtr MakeSideChained() { return MakeRouted({Main("stereo"), Aux("mono", "Key")}, {Main("stereo")}); }

/// What a filter has told, in order: "format", "in 0 1 > 1 0".
class Told {
public:
    explicit Told(const RoutedFilterPtr& filter)
        : mMap(filter->GetChannelMapChangedSignal().connect(
              [this](AudioFilter::Direction direction, const ChannelMap& before, const ChannelMap& after) {
                  mTold.push_back((direction == AudioFilter::kInput ? "in " : "out ") + MapText(before) + " > " +
                                  MapText(after));
              })),
          mFormat(filter->GetTargetFormatChangedSignal().connect([this] { mTold.push_back("format"); })) {}

    std::vector<std::string> Take() { return std::exchange(mTold, {}); }

private:
    std::vector<std::string> mTold;
    boost::signals::scoped_connection mMap;
    boost::signals::scoped_connection mFormat;
};

}  // namespace

TEST(ChannelRoutingTest, BeforeTheFirstTrackNothingIsConnected) {
    const RoutedFilterPtr filter = MakeSideChained();
    EXPECT_EQ(Inputs(filter), "- - -");
    EXPECT_EQ(Outputs(filter), "- -");
    EXPECT_THAT(filter->GetChannelMapTargetChannelLayout(), IsEmpty());
    EXPECT_EQ(filter->GetSideChainTargetBus(), AudioFilterBusDescription());
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 0);
    filter->AutoConnectSideChainChannels(true);
    EXPECT_EQ(Inputs(filter), "- - -");
}

TEST(ChannelRoutingTest, EffectChannelsAreCountedAcrossAllBuses) {
    const RoutedFilterPtr filter = MakeRouted({Main("5.1"), Aux("mono"), Main("")}, {});
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), 7);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kOutput), 0);
}

TEST(ChannelRoutingTest, ATrackIsConnectedByItselfAndTellsItsFormatFirst) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->GetChannelMap(AudioFilter::kInput);
    Told told(filter);
    ASSERT_TRUE(filter->SetTargetFormat(Layout("stereo"), Main("mono", "Speech")));
    EXPECT_EQ(Inputs(filter), "0 1 2");
    EXPECT_EQ(Outputs(filter), "0 1");
    EXPECT_EQ(filter->GetChannelMapTargetChannelLayout(), Layout("stereo"));
    EXPECT_EQ(filter->GetSideChainTargetBus(), Main("mono", "Speech"));
    EXPECT_THAT(told.Take(), ElementsAre("format", "in - - - > 0 1 2", "out - - > 0 1"));
}

TEST(ChannelRoutingTest, OnlyTheMapsThatChangeAreTold) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    Told told(filter);
    filter->SetTargetFormat(Layout("stereo"), Main(""));
    EXPECT_THAT(told.Take(), ElementsAre("format", "in 0 1 2 > 0 1 -"));
    filter->SetTargetFormat(Layout("5.1"), Main(""));
    EXPECT_THAT(told.Take(), ElementsAre("format"));
    filter->SetTargetFormat(Layout("mono"), Main(""));
    EXPECT_THAT(told.Take(), ElementsAre("format", "in 0 1 - > 0 0 -", "out 0 1 > 0 0"));
}

TEST(ChannelRoutingTest, TheSameFormatAgainKeepsTheMapsAndIsNotTold) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    filter->SetChannelMap(Map("1 0 -"), AudioFilter::kInput);
    Told told(filter);
    EXPECT_TRUE(filter->SetTargetFormat(Layout("stereo"), Main("mono")));
    EXPECT_THAT(told.Take(), IsEmpty());
    EXPECT_EQ(Inputs(filter), "1 0 -");
}

TEST(ChannelRoutingTest, ASideChainOfAnotherNameIsAnotherFormat) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono", "Speech"));
    Told told(filter);
    filter->SetTargetFormat(Layout("stereo"), Main("mono", "Drums"));
    EXPECT_THAT(told.Take(), ElementsAre("format"));
}

TEST(ChannelRoutingTest, MoreTargetChannelsThanThereMayBeAreRefused) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    Told told(filter);
    const std::size_t most = AudioFilter::kMaxTargetChannels;
    EXPECT_FALSE(filter->SetTargetFormat(zelmediatypes::AudioChannelLayout(most + 1), AudioFilterBusDescription()));
    EXPECT_FALSE(filter->SetTargetFormat(zelmediatypes::AudioChannelLayout(most), Main("mono")));
    EXPECT_FALSE(
        filter->SetTargetFormat(Layout("mono"), {zelcore::ustring(), zelmediatypes::AudioChannelLayout(most)}));
    EXPECT_EQ(filter->GetChannelMapTargetChannelLayout(), Layout("stereo"));
    EXPECT_EQ(Inputs(filter), "0 1 2");
    EXPECT_THAT(told.Take(), IsEmpty());
    EXPECT_TRUE(filter->SetTargetFormat(zelmediatypes::AudioChannelLayout(most - 1), Main("mono")));
    EXPECT_EQ(Inputs(filter), "0 1 255");
}

TEST(ChannelRoutingTest, AMapIsCutToTheChannelsThatThereAre) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    // An effect channel that is missing, two that are not there, and targets that are not.
    filter->SetChannelMap({{0, 2}, {2, 3}, {3, 0}, {-1, 1}, {kFarthest, 0}}, AudioFilter::kInput);
    EXPECT_EQ(Inputs(filter), "2 - -");
    filter->SetChannelMap({{0, kFarthest}, {1, -kFarthest - 1}, {2, 1}}, AudioFilter::kInput);
    EXPECT_EQ(Inputs(filter), "- - 1");
    filter->SetChannelMap({}, AudioFilter::kInput);
    EXPECT_EQ(Inputs(filter), "- - -");
}

TEST(ChannelRoutingTest, OutputsDoNotGoToASideChain) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    filter->SetChannelMap(Map("2 1"), AudioFilter::kOutput);
    EXPECT_EQ(Outputs(filter), "- 1");
    filter->AssignChannelMapping(AudioFilter::kOutput, 1, 2);
    EXPECT_EQ(Outputs(filter), "- -");
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 2);
    EXPECT_EQ(Inputs(filter), "2 1 -");
}

TEST(ChannelRoutingTest, OnlyAnotherMapIsToldWithTheOneBefore) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    Told told(filter);
    filter->SetChannelMap(Map("0 1 2"), AudioFilter::kInput);
    filter->SetChannelMap(Map("0 1 2 5 6"), AudioFilter::kInput);
    EXPECT_THAT(told.Take(), IsEmpty());
    filter->SetChannelMap(Map("1 0 2"), AudioFilter::kInput);
    filter->SetChannelMap(Map("0 0"), AudioFilter::kOutput);
    EXPECT_THAT(told.Take(), ElementsAre("in 0 1 2 > 1 0 2", "out 0 1 > 0 0"));
}

TEST(ChannelRoutingTest, AnAssignmentMovesAConnectionAndNeverDoublesIt) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    Told told(filter);
    filter->AssignChannelMapping(AudioFilter::kInput, 1, 0);
    EXPECT_EQ(Inputs(filter), "- 0 2");
    // Once for the whole of it.
    EXPECT_THAT(told.Take(), ElementsAre("in 0 1 2 > - 0 2"));
    filter->SetChannelMap(Map("0 0 0"), AudioFilter::kInput);
    filter->AssignChannelMapping(AudioFilter::kInput, 2, 0);
    EXPECT_EQ(Inputs(filter), "- - 0");
    EXPECT_EQ(Outputs(filter), "0 1");
    filter->AssignChannelMapping(AudioFilter::kOutput, 0, 1);
    EXPECT_EQ(Outputs(filter), "1 -");
}

TEST(ChannelRoutingTest, AnAssignmentOfWhatIsThereAlreadyChangesNothing) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    Told told(filter);
    filter->AssignChannelMapping(AudioFilter::kInput, 1, 1);
    EXPECT_THAT(told.Take(), IsEmpty());
}

TEST(ChannelRoutingTest, AnAssignmentToNoTargetDisconnectsAndOneOfNoChannelDoesNothing) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    for (const int target : {kNotConnected, 3, kFarthest, -kFarthest - 1}) {
        filter->SetChannelMap(Map("0 1 2"), AudioFilter::kInput);
        filter->AssignChannelMapping(AudioFilter::kInput, 1, target);
        EXPECT_EQ(Inputs(filter), "0 - 2") << target;
    }
    for (const int channel : {-1, 3, kFarthest, -kFarthest - 1}) {
        filter->AssignChannelMapping(AudioFilter::kInput, channel, 0);
        EXPECT_EQ(Inputs(filter), "0 - 2") << channel;
    }
}

TEST(ChannelRoutingTest, AutomaticSideChainConnectionsAreTold) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    filter->AssignChannelMapping(AudioFilter::kInput, 2, kNotConnected);
    Told told(filter);
    filter->AutoConnectSideChainChannels(false);
    filter->AutoConnectSideChainChannels(true);
    EXPECT_THAT(told.Take(), ElementsAre("in 0 1 - > 0 1 2"));
}

TEST(ChannelRoutingTest, AnEffectThatTakesTheTracksLayoutIsConnectedInIt) {
    const RoutedFilterPtr filter = MakeRouted({Main("stereo")}, {Main("stereo")});
    filter->SetBusesAfterAdoption({Main("5.1")}, {Main("L R C Lfe Rs Ls")});
    filter->SetTargetFormat(Layout("5.1"), AudioFilterBusDescription());
    EXPECT_EQ(Inputs(filter), "0 1 2 3 4 5");
    EXPECT_EQ(Outputs(filter), "0 1 2 3 5 4");
    filter->SetBusesAfterAdoption({Main("mono")}, {});
    filter->SetTargetFormat(Layout("mono"), AudioFilterBusDescription());
    EXPECT_EQ(Inputs(filter), "0");
    EXPECT_EQ(Outputs(filter), "");
}

TEST(ChannelRoutingTest, AFilterThatIsStartedStartsOverInItsNewTrack) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), AudioFilterBusDescription());
    ASSERT_TRUE(filter->StartProcessing(48000, 64));
    filter->SetTargetFormat(Layout("5.1"), AudioFilterBusDescription());
    filter->SetTargetFormat(Layout("5.1"), AudioFilterBusDescription());
    filter->StopProcessing();
    filter->SetTargetFormat(Layout("mono"), AudioFilterBusDescription());
    EXPECT_THAT(filter->GetCalls(),
                ElementsAre("adopt 2", "start 48000 64", "stop", "adopt 6", "start 48000 64", "stop", "adopt 1"));
}

TEST(ChannelRoutingTest, WhoIsToldMayChangeTheMapsAndLetGoOfTheFilter) {
    RoutedFilterPtr filter = MakeSideChained();
    std::vector<std::string> told;
    const boost::signals::connection format = filter->GetTargetFormatChangedSignal().connect([&] {
        told.push_back(Inputs(filter));
        filter->SetChannelMap(Map("1 0 -"), AudioFilter::kInput);
    });
    const boost::signals::connection map = filter->GetChannelMapChangedSignal().connect(
        [&](AudioFilter::Direction direction, const ChannelMap&, const ChannelMap& after) {
            told.push_back((direction == AudioFilter::kInput ? "in " : "out ") + MapText(after));
            if (direction == AudioFilter::kOutput) filter.reset();
        });
    filter->SetTargetFormat(Layout("stereo"), Main("mono"));
    EXPECT_EQ(filter, nullptr);
    EXPECT_EQ(told.front(), "0 1 2");
    EXPECT_EQ(told.back(), "out 0 1");
}

TEST(ChannelRoutingTest, ASideChainOfAnotherNameKeepsTheSoundAndTheMaps) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->SetTargetFormat(Layout("stereo"), Main("mono", "Speech"));
    ASSERT_TRUE(filter->StartProcessing(48000.0, 64));
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    const std::string inputs = Inputs(filter);
    const std::vector<std::string> calls = filter->GetCalls();
    filter->SetTargetFormat(Layout("stereo"), Main("mono", "Drums"));
    EXPECT_EQ(filter->GetSideChainTargetBus(), Main("mono", "Drums"));
    EXPECT_EQ(Inputs(filter), inputs);
    EXPECT_EQ(filter->GetCalls(), calls);
}

TEST(ChannelRoutingTest, WhoeverHearsOfAnotherFormatFindsTheFilterAtWorkAgainAndMayThrow) {
    const RoutedFilterPtr filter = MakeSideChained();
    ASSERT_TRUE(filter->StartProcessing(48000.0, 64));
    filter->GetTargetFormatChangedSignal().connect([&filter] {
        EXPECT_TRUE(filter->IsProcessing());
        throw std::runtime_error("a listener's");
    });
    EXPECT_THROW(filter->SetTargetFormat(Layout("stereo"), AudioFilterBusDescription()), std::runtime_error);
    EXPECT_TRUE(filter->IsProcessing());
}

TEST(ChannelRoutingTest, WhoeverHearsOfAnotherFormatMayStopTheFilter) {
    const RoutedFilterPtr filter = MakeSideChained();
    ASSERT_TRUE(filter->StartProcessing(48000.0, 64));
    filter->GetTargetFormatChangedSignal().connect([&filter] { filter->StopProcessing(); });
    EXPECT_TRUE(filter->SetTargetFormat(Layout("stereo"), AudioFilterBusDescription()));
    EXPECT_FALSE(filter->IsProcessing());
}

TEST(ChannelRoutingTest, AnEffectThatRefusesItsNewChannelsIsStopped) {
    const RoutedFilterPtr filter = MakeSideChained();
    ASSERT_TRUE(filter->StartProcessing(48000.0, 64));
    filter->SetStarts(false);
    EXPECT_TRUE(filter->SetTargetFormat(Layout("5.1"), AudioFilterBusDescription()));
    EXPECT_FALSE(filter->IsProcessing());
}

TEST(ChannelRoutingTest, AMapThatWasChangedMeanwhileIsNotToldOnceMoreAsItWas) {
    const RoutedFilterPtr filter = MakeSideChained();
    filter->GetTargetFormatChangedSignal().connect([&filter] {
        filter->SetChannelMap({{0, 1}, {1, 0}}, AudioFilter::kInput);
    });
    std::string last;
    filter->GetChannelMapChangedSignal().connect(
        [&last](AudioFilter::Direction direction, const ChannelMap&, const ChannelMap& after) {
            if (direction == AudioFilter::kInput) last = MapText(after);
        });
    filter->SetTargetFormat(Layout("stereo"), AudioFilterBusDescription());
    EXPECT_EQ(Inputs(filter), "1 0 -");
    EXPECT_EQ(last, "1 0 -");
}
