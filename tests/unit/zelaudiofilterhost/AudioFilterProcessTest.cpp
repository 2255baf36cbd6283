#include <atomic>
#include <limits>
#include <numeric>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BusesForTest.h"
#include "RoutedFilter.h"
#include "support/AllocationCount.h"
#include "support/WaitFor.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::Each;
using testing::ElementsAre;

namespace {

constexpr int kFrames = 32;
constexpr float kRubbish = 99.0f;
const AudioFilterBusDescription kNoSideChain;

/// The channels of a track as Process gets them.
class Track {
public:
    /// Signal in every channel of `layout` and, behind them, of the side-chain.
    explicit Track(AudioFilter& filter, int frames = kFrames)
        : mFilter(filter), mFrames(frames), mMain(filter.GetChannelMapTargetChannelLayout().size()) {
        const std::size_t count = mMain + filter.GetSideChainTargetBus().GetLayout().size();
        for (std::size_t i = 0; i < count; ++i) mInputs.push_back(Signal(static_cast<int>(i), frames));
    }

    /// What comes out of one block; an error when the inputs were changed or more was written than the block.
    std::vector<Samples> Process() {
        const std::vector<Samples> before = mInputs;
        std::vector<Samples> outputs(mMain, Samples(static_cast<std::size_t>(mFrames + 1), kRubbish));
        std::vector<const float*> in;
        std::vector<float*> out;
        for (const Samples& input : mInputs) in.push_back(input.data());
        for (Samples& output : outputs) out.push_back(output.data());
        mFilter.Process(in.data(), out.data(), mFrames);
        EXPECT_EQ(mInputs, before);
        for (Samples& output : outputs) {
            EXPECT_EQ(output.back(), kRubbish);
            output.pop_back();
        }
        return outputs;
    }

    /// The same with every main channel's output in the memory of its input.
    std::vector<Samples> ProcessInPlace() {
        std::vector<Samples> samples = mInputs;
        std::vector<float*> channels;
        for (Samples& channel : samples) channels.push_back(channel.data());
        mFilter.Process(channels.data(), channels.data(), mFrames);
        EXPECT_TRUE(std::equal(samples.begin() + static_cast<std::ptrdiff_t>(mMain), samples.end(),
                               mInputs.begin() + static_cast<std::ptrdiff_t>(mMain)));
        samples.resize(mMain);
        return samples;
    }

private:
    AudioFilter& mFilter;
    int mFrames;
    std::size_t mMain;
    std::vector<Samples> mInputs;
};

Samples Input(int channel) { return Signal(channel, kFrames); }
Samples Silence() { return Samples(kFrames, 0.0f); }

Samples Mean(const std::vector<Samples>& all) {
    Samples mean = Silence();
    for (const Samples& samples : all) {
        for (std::size_t i = 0; i < mean.size(); ++i) mean[i] += samples[i] / static_cast<float>(all.size());
    }
    return mean;
}

/// In a track, started, with these maps; the effect passes sound from each input to the output of the same number.
RoutedFilterPtr Start(const AudioFilterBusList& inputs, const AudioFilterBusList& outputs, const std::string& track,
                      const std::string& sideChain, const std::string& inputMap, const std::string& outputMap) {
    const RoutedFilterPtr filter = MakeRouted(inputs, outputs);
    EXPECT_TRUE(filter->SetTargetFormat(Layout(track), Main(sideChain)));
    EXPECT_TRUE(filter->StartProcessing(48000, kFrames));
    filter->SetChannelMap(Map(inputMap), AudioFilter::kInput);
    filter->SetChannelMap(Map(outputMap), AudioFilter::kOutput);
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kInput)), inputMap);
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kOutput)), outputMap);
    return filter;
}

RoutedFilterPtr StartStereo(const std::string& inputMap, const std::string& outputMap) {
    return Start({Main("stereo")}, {Main("stereo")}, "stereo", "", inputMap, outputMap);
}

}  // namespace

TEST(AudioFilterProcessTest, SoundGoesWhereTheMapsSay) {
    EXPECT_THAT(Track(*StartStereo("0 1", "0 1")).Process(), ElementsAre(Input(0), Input(1)));
    EXPECT_THAT(Track(*StartStereo("1 0", "0 1")).Process(), ElementsAre(Input(1), Input(0)));
    EXPECT_THAT(Track(*StartStereo("0 1", "1 0")).Process(), ElementsAre(Input(1), Input(0)));
    EXPECT_THAT(Track(*StartStereo("1 0", "1 0")).Process(), ElementsAre(Input(0), Input(1)));
}

TEST(AudioFilterProcessTest, EachChannelOfALargeTrackGoesItsWay) {
    const AudioFilterBusList buses = {Main("7.1.4")};
    const RoutedFilterPtr filter =
        Start(buses, buses, "7.1.4", "", "11 10 9 8 7 6 5 4 3 2 1 0", "1 2 3 4 5 6 7 8 9 10 11 0");
    std::vector<Samples> expected = {Input(0)};
    for (int target = 1; target < 12; ++target) expected.push_back(Input(12 - target));
    EXPECT_EQ(Track(*filter).Process(), expected);
    EXPECT_EQ(Track(*filter).ProcessInPlace(), expected);
}

TEST(AudioFilterProcessTest, OneChannelOfTheTrackMayFeedSeveralOfTheEffect) {
    EXPECT_THAT(Track(*StartStereo("1 1", "0 1")).Process(), ElementsAre(Input(1), Input(1)));
}

TEST(AudioFilterProcessTest, AChannelThatIsNotConnectedReadsSilence) {
    EXPECT_THAT(Track(*StartStereo("- 1", "0 1")).Process(), ElementsAre(Silence(), Input(1)));
}

TEST(AudioFilterProcessTest, SeveralOutputsInOneChannelAreTheirMean) {
    EXPECT_THAT(Track(*StartStereo("0 1", "0 0")).Process(), ElementsAre(Mean({Input(0), Input(1)}), Silence()));
    const AudioFilterBusList buses = {Main("quad")};
    EXPECT_THAT(Track(*Start(buses, buses, "quad", "", "0 1 2 3", "1 1 1 1")).Process(),
                ElementsAre(Silence(), Mean({Input(0), Input(1), Input(2), Input(3)}), Silence(), Silence()));
}

TEST(AudioFilterProcessTest, AMonoTrackIsAsLoudBehindAStereoEffectAsBefore) {
    const RoutedFilterPtr filter = MakeRouted({Main("stereo")}, {Main("stereo")});
    filter->SetTargetFormat(Layout("mono"), kNoSideChain);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0)));
}

TEST(AudioFilterProcessTest, AChannelThatOnlyFeedsTheEffectBecomesSilent) {
    EXPECT_THAT(Track(*StartStereo("0 1", "0 -")).Process(), ElementsAre(Input(0), Silence()));
    EXPECT_THAT(Track(*StartStereo("0 1", "0 -")).ProcessInPlace(), ElementsAre(Input(0), Silence()));
}

TEST(AudioFilterProcessTest, AChannelThatIsConnectedInNeitherDirectionPasses) {
    EXPECT_THAT(Track(*StartStereo("0 -", "0 -")).Process(), ElementsAre(Input(0), Input(1)));
    EXPECT_THAT(Track(*StartStereo("- -", "- -")).Process(), ElementsAre(Input(0), Input(1)));
    EXPECT_THAT(Track(*StartStereo("0 -", "0 -")).ProcessInPlace(), ElementsAre(Input(0), Input(1)));
    const RoutedFilterPtr filter = MakeRouted({Main("stereo")}, {Main("stereo")});
    filter->SetTargetFormat(Layout("5.1"), kNoSideChain);
    filter->SetEffect([](const float* const*, float* const* outputs, int frames) {
        for (int i = 0; i < 2; ++i) std::fill_n(outputs[i], frames, 0.5f);
    });
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    EXPECT_THAT(Track(*filter).Process(),
                ElementsAre(Samples(kFrames, 0.5f), Samples(kFrames, 0.5f), Input(2), Input(3), Input(4), Input(5)));
}

TEST(AudioFilterProcessTest, AnOutputThatIsNotFedFromItsChannelReplacesIt) {
    EXPECT_THAT(Track(*StartStereo("0 -", "1 -")).Process(), ElementsAre(Silence(), Input(0)));
}

TEST(AudioFilterProcessTest, InPlaceIsTheSame) {
    for (const char* inputs : {"0 1", "1 0", "1 1", "- 0"}) {
        for (const char* outputs : {"0 1", "1 0", "0 0", "- 1"}) {
            const RoutedFilterPtr filter = StartStereo(inputs, outputs);
            EXPECT_EQ(Track(*filter).ProcessInPlace(), Track(*filter).Process()) << inputs << ", " << outputs;
        }
    }
}

TEST(AudioFilterProcessTest, ASideChainFeedsTheEffectAndStaysAsItIs) {
    // Output 1 is the side-chain's first channel, output 0 its second.
    const RoutedFilterPtr filter = Start({Main("stereo"), Aux("stereo")}, {Main("stereo"), Main("stereo")}, "stereo",
                                         "stereo", "0 1 3 2", "- - 0 1");
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(3), Input(2)));
    EXPECT_THAT(Track(*filter).ProcessInPlace(), ElementsAre(Input(3), Input(2)));
}

TEST(AudioFilterProcessTest, AChannelOfTheTrackMayBeASideChain) {
    const RoutedFilterPtr filter =
        Start({Main("mono"), Aux("mono")}, {Main("mono"), Aux("mono")}, "stereo", "", "0 1", "- 0");
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(1), Silence()));
}

TEST(AudioFilterProcessTest, WhileStoppedEveryChannelPasses) {
    const RoutedFilterPtr filter = StartStereo("1 0", "0 -");
    filter->StopProcessing();
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0), Input(1)));
    EXPECT_THAT(Track(*filter).ProcessInPlace(), ElementsAre(Input(0), Input(1)));
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(1), Silence()));
}

TEST(AudioFilterProcessTest, BeforeItWasEverStartedEveryChannelPasses) {
    const RoutedFilterPtr filter = MakeRouted({Main("stereo")}, {Main("stereo")});
    filter->SetTargetFormat(Layout("5.1"), Main("mono"));
    EXPECT_EQ(Track(*filter).Process(),
              (std::vector<Samples>{Input(0), Input(1), Input(2), Input(3), Input(4), Input(5)}));
}

TEST(AudioFilterProcessTest, MoreFramesThanAnnouncedPassAndNoneAreHarmless) {
    const RoutedFilterPtr filter = StartStereo("1 0", "0 1");
    EXPECT_THAT(Track(*filter, kFrames + 1).Process(), ElementsAre(Signal(0, kFrames + 1), Signal(1, kFrames + 1)));
    filter->Process(nullptr, nullptr, 0);
    filter->Process(nullptr, nullptr, -1);
    EXPECT_THAT(Track(*filter, kFrames - 1).Process(), ElementsAre(Signal(1, kFrames - 1), Signal(0, kFrames - 1)));
}

TEST(AudioFilterProcessTest, AFilterThatDoesNotStartLetsEveryChannelPass) {
    const RoutedFilterPtr filter = MakeRouted({Main("stereo")}, {Main("stereo")});
    filter->SetTargetFormat(Layout("stereo"), kNoSideChain);
    filter->SetChannelMap(Map("1 0"), AudioFilter::kInput);
    filter->SetStarts(false);
    EXPECT_FALSE(filter->StartProcessing(48000, kFrames));
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0), Input(1)));
    filter->SetStarts(true);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    filter->SetStarts(false);
    EXPECT_FALSE(filter->StartProcessing(96000, kFrames));
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0), Input(1)));
    // Starting over in another track fails as well.
    filter->SetStarts(true);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    filter->SetStarts(false);
    EXPECT_TRUE(filter->SetTargetFormat(Layout("mono"), kNoSideChain));
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0)));
}

TEST(AudioFilterProcessTest, NumbersOutOfRangeDoNotReachTheEffect) {
    const RoutedFilterPtr filter = MakeRouted({Main("stereo")}, {Main("stereo")});
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    for (const double rate : {0.0, 0.9, -48000.0, 1.1e7, noNumber, std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(filter->StartProcessing(rate, kFrames)) << rate;
    }
    for (const int frames : {0, -1, (1 << 20) + 1, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(filter->StartProcessing(48000, frames)) << frames;
    }
    EXPECT_THAT(filter->GetCalls(), testing::IsEmpty());
    EXPECT_TRUE(filter->StartProcessing(1, 1));
    EXPECT_TRUE(filter->StartProcessing(1e7, 1 << 20));
    EXPECT_THAT(filter->GetCalls(), ElementsAre("start 1 1", "stop", "start 10000000 1048576"));
}

TEST(AudioFilterProcessTest, APluginThatThrowsIsSilentWhereItShouldHaveSoundedAndTheRestPasses) {
    for (const bool isVst3 : {false, true}) {
        const auto filter = isVst3 ? MakeVst3("bad/ThrowsWhenProcessing3") : MakeVst("bad/throws_when_processing");
        filter->SetTargetFormat(Layout("5.1"), kNoSideChain);
        ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
        filter->SetParameterValue(0, 1.0f);
        EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kOutput)), "0 1");
        EXPECT_THAT(Track(*filter).Process(),
                    ElementsAre(Silence(), Silence(), Input(2), Input(3), Input(4), Input(5)));
    }
}

TEST(AudioFilterProcessTest, EffectsWithoutInputsOrOutputsAreRoutedToo) {
    const RoutedFilterPtr synth = MakeRouted({}, {Main("stereo")});
    synth->SetTargetFormat(Layout("stereo"), kNoSideChain);
    ASSERT_TRUE(synth->StartProcessing(48000, kFrames));
    EXPECT_THAT(Track(*synth).Process(), ElementsAre(Silence(), Silence()));
    const RoutedFilterPtr meter = MakeRouted({Main("stereo")}, {});
    meter->SetTargetFormat(Layout("stereo"), kNoSideChain);
    ASSERT_TRUE(meter->StartProcessing(48000, kFrames));
    EXPECT_THAT(Track(*meter).Process(), ElementsAre(Silence(), Silence())) << "channels that only feed it";
    const RoutedFilterPtr nothing = MakeRouted({}, {});
    nothing->SetTargetFormat(Layout("stereo"), kNoSideChain);
    ASSERT_TRUE(nothing->StartProcessing(48000, kFrames));
    EXPECT_THAT(Track(*nothing).Process(), ElementsAre(Input(0), Input(1)));
}

TEST(AudioFilterProcessTest, AMapOrATrackThatIsChangedCountsFromTheNextBlock) {
    const RoutedFilterPtr filter = StartStereo("0 1", "0 1");
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0), Input(1)));
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(1), Silence()));
    filter->SetChannelMap(Map("1 0"), AudioFilter::kInput);
    filter->SetChannelMap(Map("0 0"), AudioFilter::kInput);
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0), Input(0)));
    filter->SetTargetFormat(Layout("3.0"), kNoSideChain);
    EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(0), Input(1), Input(2)));
}

TEST(AudioFilterProcessTest, ATestPluginIsRoutedExactly) {
    for (const bool isVst3 : {false, true}) {
        const auto filter = isVst3 ? MakeVst3("good/ZelSideChain3") : MakeVst("good/zel_sidechain");
        filter->SetTargetFormat(Layout("stereo"), Main("mono"));
        filter->SetParameterValue(0, 1.0f);
        ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
        filter->SetChannelMap(Map(isVst3 ? "1 0 2" : "1 0 2 2"), AudioFilter::kInput);
        Samples left = Input(1);
        Samples right = Input(0);
        for (std::size_t i = 0; i < left.size(); ++i) {
            const float gain = 1.0f - std::abs(Input(2)[i]);
            left[i] *= gain;
            right[i] *= gain;
        }
        EXPECT_THAT(Track(*filter).Process(), ElementsAre(left, right));
        filter->SetChannelMap(Map(isVst3 ? "1 0 -" : "1 0 - -"), AudioFilter::kInput);
        EXPECT_THAT(Track(*filter).Process(), ElementsAre(Input(1), Input(0)));
    }
}

TEST(AudioFilterProcessTest, TheSoundThreadTakesNoMemory) {
    for (const char* name : {"routed", "good/zel_sidechain", "good/ZelSideChain3"}) {
        const boost::intrusive_ptr<AudioFilter> filter =
            std::string(name) == "routed"
                ? boost::intrusive_ptr<AudioFilter>(MakeRouted({Main("stereo"), Aux("mono")}, {Main("stereo")}))
                : (std::string(name).ends_with("3") ? MakeVst3(name) : MakeVst(name));
        filter->SetTargetFormat(Layout("5.1"), Main("mono"));
        ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
        std::vector<Samples> samples(7, Samples(kFrames + 1, 0.25f));
        std::vector<float*> channels;
        for (Samples& channel : samples) channels.push_back(channel.data());
        for (const char* map : {"0 1 6", "0 1 -", "1 0 6", "5 5 5"}) {
            filter->SetChannelMap(Map(map), AudioFilter::kInput);
            filter->SetChannelMap(Map(map), AudioFilter::kOutput);
            filter->SetParameterValue(0, 0.5f);
            const AllocationCount count;
            for (int block = 0; block < 3; ++block) filter->Process(channels.data(), channels.data(), kFrames);
            filter->Process(channels.data(), channels.data(), kFrames + 1);
            EXPECT_EQ(count.Get(), 0u) << name << ", " << map;
        }
    }
    const AllocationCount count;
    ::operator delete(::operator new(1));
    EXPECT_EQ(count.Get(), 2u) << "that they are counted at all";
}

TEST(AudioFilterProcessTest, MapsAreChangedWhileAnotherThreadProcesses) {
    const RoutedFilterPtr filter = StartStereo("0 1", "0 1");
    const Samples ones(kFrames, 1.0f);
    const Samples twos(kFrames, 2.0f);
    const float* const inputs[] = {ones.data(), twos.data()};
    std::atomic<bool> ends{false};
    std::atomic<int> straight{0};
    std::atomic<int> swapped{0};
    std::atomic<int> others{0};
    std::thread sound([&] {
        Samples left(kFrames);
        Samples right(kFrames);
        float* const outputs[] = {left.data(), right.data()};
        while (!ends) {
            filter->Process(inputs, outputs, kFrames);
            // A block is all of one map or all of another.
            const bool isStraight = left == ones && right == twos;
            const bool isSwapped = left == twos && right == ones;
            ++(isStraight ? straight : isSwapped ? swapped : others);
        }
    });
    for (int i = 0; i < 20000; ++i) filter->SetChannelMap(Map(i % 2 == 0 ? "1 0" : "0 1"), AudioFilter::kInput);
    const int before = straight;
    EXPECT_TRUE(WaitFor([&] { return straight > before; }));
    filter->SetChannelMap(Map("1 0"), AudioFilter::kInput);
    const int beforeSwapped = swapped;
    EXPECT_TRUE(WaitFor([&] { return swapped > beforeSwapped; }));
    ends = true;
    sound.join();
    EXPECT_EQ(others, 0);
}

TEST(AudioFilterProcessTest, MapsOfAPluginAreChangedWhileAnotherThreadProcesses) {
    for (const bool isVst3 : {false, true}) {
        const auto filter = isVst3 ? MakeVst3("good/ZelSideChain3") : MakeVst("good/zel_sidechain");
        filter->SetTargetFormat(Layout("stereo"), Main("mono"));
        ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
        std::atomic<bool> ends{false};
        std::atomic<int> blocks{0};
        std::thread sound([&] {
            Track track(*filter);
            while (!ends) {
                track.Process();
                ++blocks;
            }
        });
        for (int i = 0; i < 300; ++i) {
            filter->AssignChannelMapping(AudioFilter::kInput, i % 3, (i / 3) % 4 - 1);
            filter->AssignChannelMapping(AudioFilter::kOutput, i % 2, (i / 2) % 3 - 1);
            filter->AutoConnectSideChainChannels(i % 2 == 0);
            filter->SetParameterValue(0, static_cast<float>(i) / 300.0f);
        }
        const int before = blocks;
        EXPECT_TRUE(WaitFor([&] { return blocks > before + 1; }));
        ends = true;
        sound.join();
    }
}
