#include <cmath>
#include <filesystem>
#include <limits>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

#include "DescribeForTest.h"
#include "support/InstalledPlugins.h"
#include "Vst2FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::Each;
using testing::ElementsAre;

namespace {

typedef boost::intrusive_ptr<AudioFilter> Filter;

constexpr double kRate = 44100.0;
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinite = std::numeric_limits<float>::infinity();

std::vector<std::string> Names(const AudioFilter& filter) {
    std::vector<std::string> names;
    for (int i = 0; i < filter.GetParameterCount(); ++i) names.push_back(Text(filter.GetParameterInfo(i)->GetName()));
    return names;
}

std::string ValueText(const AudioFilter& filter, int index) { return Text(filter.GetParameterValueString(index)); }

Samples Times(float factor, Samples samples) {
    for (float& sample : samples) sample *= factor;
    return samples;
}

/// Every operation on an index of which the filter has no parameter.
void ExpectNoParameter(AudioFilter& filter, int index) {
    EXPECT_EQ(Text(filter.GetParameterInfo(index)->GetName()), "") << index;
    EXPECT_EQ(Text(filter.GetParameterInfo(index)->GetLabel()), "") << index;
    EXPECT_EQ(filter.GetParameterValue(index), 0.0f) << index;
    EXPECT_EQ(ValueText(filter, index), "") << index;
    filter.SetParameterValue(index, 0.75f);
}

void ExpectSilence(AudioFilter& filter, int frames) {
    for (const Samples& output : Process(filter, frames)) EXPECT_THAT(output, Each(0.0f));
}

}  // namespace

TEST(Vst2AudioFilterTest, EveryGoodPluginIsMadeStartedAndProcesses) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TestPlugin("vst/good"))) {
        for (const auto& descriptor : ReadVst("good/" + entry.path().stem().string())) {
            const Filter filter = descriptor->CreateFilter();
            EXPECT_EQ(filter->GetComponentID(), descriptor->GetComponent().componentId);
            EXPECT_EQ(filter->GetName(), descriptor->GetComponent().name);
            EXPECT_EQ(filter->GetParameterCount(), descriptor->GetComponent().parameterCount);
            EXPECT_TRUE(filter->StartProcessing(kRate, 64)) << entry.path();
            for (const Samples& output : Process(*filter, 64)) {
                EXPECT_TRUE(
                    std::all_of(output.begin(), output.end(), [](float value) { return std::abs(value) < 10; }));
            }
            ++count;
        }
    }
    EXPECT_GE(count, 15u);
}

TEST(Vst2AudioFilterTest, ParametersHaveNamesValuesAndTexts) {
    const Filter gain = MakeVst("good/zel_gain");
    EXPECT_THAT(Names(*gain), ElementsAre("Gain", "Balance", "Width", "Mute"));
    EXPECT_EQ(gain->GetParameterValue(0), 0.5f);
    EXPECT_EQ(gain->GetParameterValue(2), 1.0f);
    EXPECT_EQ(ValueText(*gain, 0), "0.50");
    gain->SetParameterValue(0, 0.25f);
    EXPECT_EQ(gain->GetParameterValue(0), 0.25f);
    EXPECT_EQ(ValueText(*gain, 0), "0.25");
    EXPECT_EQ(gain->GetParameterValue(1), 0.5f);
}

TEST(Vst2AudioFilterTest, AFilterMayHaveNoParameters) {
    const Filter plain = MakeVst("good/zel_plain");
    EXPECT_EQ(plain->GetParameterCount(), 0);
    for (const int index : {-1, 0, 1}) ExpectNoParameter(*plain, index);
}

TEST(Vst2AudioFilterTest, AFilterMayHaveThousandsOfParameters) {
    const Filter many = MakeVst("good/zel_many");
    ASSERT_EQ(many->GetParameterCount(), 2000);
    EXPECT_EQ(Text(many->GetParameterInfo(0)->GetLabel()), "x");
    EXPECT_EQ(Text(many->GetParameterInfo(1)->GetLabel()), "");
    EXPECT_EQ(Text(many->GetParameterInfo(1999)->GetName()), "Trim 1999");
    many->SetParameterValue(1999, 1.0f);
    EXPECT_EQ(ValueText(*many, 1999), "1.00");
}

TEST(Vst2AudioFilterTest, AnIndexThatIsNotThereIsHarmless) {
    const Filter gain = MakeVst("good/zel_gain");
    constexpr int kFarthest = std::numeric_limits<int>::max();
    for (const int index : {-1, 4, 5, kFarthest, -kFarthest - 1}) ExpectNoParameter(*gain, index);
    EXPECT_EQ(gain->GetParameterValue(3), 0.0f);
}

TEST(Vst2AudioFilterTest, ValuesOutOfRangeMoveToTheNearerEndAndNoNumberIsIgnored) {
    const Filter gain = MakeVst("good/zel_gain");
    for (const auto& [given, kept] : std::vector<std::pair<float, float>>{
             {7.0f, 1.0f}, {kNoNumber, 1.0f}, {-3.0f, 0.0f}, {kInfinite, 1.0f}, {-kInfinite, 0.0f}, {0.5f, 0.5f}}) {
        gain->SetParameterValue(0, given);
        EXPECT_EQ(gain->GetParameterValue(0), kept) << given;
    }
}

TEST(Vst2AudioFilterTest, ValuesThatMakeNoSenseAreMadeToMakeSome) {
    const Filter filter = MakeVst("bad/nonsense_values");
    std::vector<float> values;
    for (int i = 0; i < filter->GetParameterCount(); ++i) values.push_back(filter->GetParameterValue(i));
    EXPECT_THAT(values, ElementsAre(0.0f, 0.0f, 0.0f, 0.0f, 1.0f));
}

TEST(Vst2AudioFilterTest, TextsOfAllKindsAreFitToBeShown) {
    const Filter texts = MakeVst("good/zel_texts");
    ASSERT_EQ(texts->GetParameterCount(), 6);
    for (int i = 0; i < 6; ++i) {
        const std::string name = Text(texts->GetParameterInfo(i)->GetName());
        EXPECT_EQ(Text(texts->GetParameterInfo(i)->GetLabel()), name);
        EXPECT_EQ(ValueText(*texts, i), name);
    }
    EXPECT_EQ(ValueText(*texts, 0), "");
    EXPECT_EQ(ValueText(*texts, 1).size(), 200u);
    EXPECT_EQ(ValueText(*texts, 2), "Größe 音量 🎵");
    EXPECT_EQ(ValueText(*texts, 3), "Two lines and  a bell");
    EXPECT_EQ(ValueText(*texts, 4), "Cut \uFFFD and stray \uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(ValueText(*texts, 5), "spaces around");
}

TEST(Vst2AudioFilterTest, ParametersThatComeAndGoAreFollowed) {
    const Filter changing = MakeVst("good/zel_changing");
    EXPECT_THAT(Names(*changing), ElementsAre("Count", "B", "C", "D", "E"));
    changing->SetParameterValue(3, 0.25f);
    changing->SetParameterValue(0, 0.75f);
    EXPECT_THAT(Names(*changing), ElementsAre("Count", "B"));
    for (const int index : {2, 3, 4, 7}) ExpectNoParameter(*changing, index);
    changing->SetParameterValue(0, 1.0f);
    EXPECT_THAT(Names(*changing), ElementsAre("Count", "B", "C", "D", "E", "F", "G", "H"));
    EXPECT_EQ(changing->GetParameterValue(3), 0.25f);
    ExpectNoParameter(*changing, 8);
    changing->SetParameterValue(0, 0.0f);
    EXPECT_EQ(changing->GetParameterCount(), 5);
}

TEST(Vst2AudioFilterTest, NonsensicalCountsAreClamped) {
    const Filter nonsense = MakeVst("bad/nonsense");
    EXPECT_EQ(nonsense->GetParameterCount(), PluginComponentInfo::kMaxParameters);
    EXPECT_EQ(nonsense->GetEffectChannelCount(AudioFilter::kInput), 0);
    EXPECT_EQ(nonsense->GetEffectChannelCount(AudioFilter::kOutput), PluginComponentInfo::kMaxChannels);
    EXPECT_FALSE(nonsense->StartProcessing(kRate, 16));
    ExpectSilence(*nonsense, 16);
}

TEST(Vst2AudioFilterTest, ExceptionsOfParametersGiveTheFallBack) {
    const Filter filter = MakeVst("bad/throws_when_asked");
    EXPECT_EQ(filter->GetParameterCount(), 2);
    ExpectNoParameter(*filter, 0);
    ExpectNoParameter(*filter, 1);
}

TEST(Vst2AudioFilterTest, AnEffectWithoutTheFunctionsHasValuesOfZeroAndIsSilent) {
    const Filter filter = MakeVst("bad/no_functions");
    filter->SetParameterValue(0, 1.0f);
    EXPECT_EQ(filter->GetParameterValue(0), 0.0f);
    EXPECT_TRUE(filter->StartProcessing(kRate, 16));
    ExpectSilence(*filter, 16);
}

TEST(Vst2AudioFilterTest, ChannelsAreThoseOfTheEffect) {
    const Filter sideChain = MakeVst("good/zel_sidechain");
    EXPECT_EQ(sideChain->GetEffectChannelCount(AudioFilter::kInput), 4);
    EXPECT_EQ(sideChain->GetEffectChannelCount(AudioFilter::kOutput), 2);
    const Filter synth = MakeVst("good/zel_synth");
    EXPECT_EQ(synth->GetEffectChannelCount(AudioFilter::kInput), 0);
}

TEST(Vst2AudioFilterTest, SoundPassesThroughExactly) {
    const Filter plain = MakeVst("good/zel_plain");
    ASSERT_TRUE(plain->StartProcessing(kRate, 256));
    for (const int frames : {256, 1, 100}) {
        EXPECT_THAT(Process(*plain, frames), ElementsAre(Signal(0, frames), Signal(1, frames)));
    }
}

TEST(Vst2AudioFilterTest, TheNextBlockHasTheParameterThatWasSet) {
    const Filter many = MakeVst("good/zel_many");
    ASSERT_TRUE(many->StartProcessing(kRate, 64));
    EXPECT_THAT(Process(*many, 64), ElementsAre(Signal(0, 64), Signal(1, 64)));
    many->SetParameterValue(0, 0.25f);
    EXPECT_THAT(Process(*many, 64), ElementsAre(Times(0.5f, Signal(0, 64)), Times(0.5f, Signal(1, 64))));
    many->SetParameterValue(0, 0.0f);
    many->SetParameterValue(1234, 1.0f);
    EXPECT_THAT(Process(*many, 64), ElementsAre(Times(0.5f * 1e-5f, Signal(0, 64)), testing::_));
}

TEST(Vst2AudioFilterTest, AnInstrumentNeedsNoInputs) {
    const Filter synth = MakeVst("good/zel_synth");
    ASSERT_TRUE(synth->StartProcessing(kRate, 64));
    const std::vector<Samples> sound = Process(*synth, 64);
    EXPECT_EQ(sound[0], sound[1]);
    EXPECT_GT(*std::max_element(sound[0].begin(), sound[0].end()), 0.4f);
}

TEST(Vst2AudioFilterTest, AnEffectThatOnlyAddsAddsToSilence) {
    const Filter adds = MakeVst("good/zel_adds");
    ASSERT_TRUE(adds->StartProcessing(kRate, 64));
    for (int i = 0; i < 3; ++i) EXPECT_THAT(Process(*adds, 64), ElementsAre(Times(0.5f, Signal(0, 64))));
}

TEST(Vst2AudioFilterTest, SamplesThatAreNoNumbersArePassedOn) {
    const Filter filter = MakeVst("bad/nonsense_values");
    ASSERT_TRUE(filter->StartProcessing(kRate, 16));
    EXPECT_THAT(Process(*filter, 16), ElementsAre(Each(testing::IsNan())));
}

TEST(Vst2AudioFilterTest, StoppedItIsSilent) {
    const Filter plain = MakeVst("good/zel_plain");
    ExpectSilence(*plain, 64);
    plain->StopProcessing();
    ASSERT_TRUE(plain->StartProcessing(kRate, 64));
    plain->StopProcessing();
    ExpectSilence(*plain, 64);
    plain->StopProcessing();
}

TEST(Vst2AudioFilterTest, MoreFramesThanAnnouncedAreSilentAndNoneAreNothing) {
    const Filter plain = MakeVst("good/zel_plain");
    ASSERT_TRUE(plain->StartProcessing(kRate, 64));
    ExpectSilence(*plain, 65);
    ExpectSilence(*plain, 0);
    EXPECT_EQ(Process(*plain, 64)[0], Signal(0, 64));
    ASSERT_TRUE(plain->StartProcessing(kRate, 65));
    EXPECT_EQ(Process(*plain, 65)[0], Signal(0, 65));
}

TEST(Vst2AudioFilterTest, NumbersOutOfRangeAreRefusedAndStopIt) {
    const Filter plain = MakeVst("good/zel_plain");
    for (const double rate : {0.0, -1.0, 0.99, 10e6 + 1, double(kNoNumber), double(kInfinite)}) {
        ASSERT_TRUE(plain->StartProcessing(kRate, 64));
        EXPECT_FALSE(plain->StartProcessing(rate, 64)) << rate;
        ExpectSilence(*plain, 64);
    }
    for (const int frames : {0, -1, (1 << 20) + 1, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(plain->StartProcessing(kRate, frames)) << frames;
    }
    EXPECT_TRUE(plain->StartProcessing(1.0, 1));
    EXPECT_TRUE(plain->StartProcessing(10e6, 1 << 20));
}

TEST(Vst2AudioFilterTest, AnExceptionInTheSoundMakesItsBlockSilent) {
    const Filter filter = MakeVst("bad/throws_when_processing");
    ASSERT_TRUE(filter->StartProcessing(kRate, 64));
    for (int i = 0; i < 3; ++i) ExpectSilence(*filter, 64);
}

TEST(Vst2AudioFilterTest, AnExceptionAtTheStartRefusesItAndStopsTheEffect) {
    const Filter filter = MakeVst("bad/throws_when_started");
    EXPECT_FALSE(filter->StartProcessing(kRate, 64));
    EXPECT_EQ(filter->GetParameterValue(0), 0.0f) << "still on";
    ExpectSilence(*filter, 64);
}

TEST(Vst2AudioFilterTest, StartAndStopComeInTheirOrderAndTheEndStopsFirst) {
    const Filter filter = MakeVst("good/zel_listening");
    filter->StopProcessing();
    EXPECT_EQ(ValueText(*filter, 0), "");
    ASSERT_TRUE(filter->StartProcessing(kRate, 64));
    EXPECT_EQ(ValueText(*filter, 0), "rate 44100 size 64 on start");
    ASSERT_TRUE(filter->StartProcessing(96000, 32));
    filter->StopProcessing();
    EXPECT_EQ(ValueText(*filter, 0), "rate 44100 size 64 on start stop off rate 96000 size 32 on start stop off");
    // It ends the process when it is closed while it is on.
    ASSERT_TRUE(filter->StartProcessing(kRate, 64));
}

TEST(Vst2AudioFilterTest, AnEffectHearsTheNumbersOfItsOwnFilter) {
    const Filter filter = MakeVst("good/zel_listening");
    const Filter other = MakeVst("good/zel_listening");
    EXPECT_EQ(ValueText(*filter, 1), "48000");
    EXPECT_EQ(ValueText(*filter, 2), "512");
    ASSERT_TRUE(filter->StartProcessing(kRate, 64));
    ASSERT_TRUE(other->StartProcessing(96000, 32));
    EXPECT_EQ(ValueText(*filter, 1), "44100");
    EXPECT_EQ(ValueText(*filter, 2), "64");
    EXPECT_EQ(ValueText(*filter, 3), "44100");
    EXPECT_EQ(ValueText(*other, 1), "96000");
    EXPECT_EQ(ValueText(*other, 2), "32");
    EXPECT_EQ(ValueText(*filter, 7), "48000") << "of a copy that nobody knows";
}

TEST(Vst2AudioFilterTest, OnlyTheThreadThatProcessesIsTheSoundThread) {
    const Filter filter = MakeVst("good/zel_listening");
    ASSERT_TRUE(filter->StartProcessing(kRate, 64));
    std::thread([&filter] { Process(*filter, 64); }).join();
    EXPECT_EQ(ValueText(*filter, 4), "1");
    EXPECT_EQ(ValueText(*filter, 5), "2");
    EXPECT_EQ(ValueText(*filter, 6), "1");
}

TEST(Vst2AudioFilterTest, AnEffectMayAskAtAnyTimeFromItsOwnThread) {
    std::vector<Filter> filters;
    for (int i = 0; i < 40; ++i) {
        filters.push_back(MakeVst("good/zel_restless"));
        filters.back()->StartProcessing(kRate, 16 + i);
        Process(*filters.back(), 16);
        if (filters.size() > 3) filters.erase(filters.begin() + i % 3);
    }
    EXPECT_EQ(Process(*filters.back(), 16)[0], Signal(0, 16));
}

TEST(Vst2AudioFilterTest, AnEffectMayWriteIntoItsInputs) {
    const Filter growing = MakeVst("good/zel_growing");
    ASSERT_TRUE(growing->StartProcessing(kRate, 4));
    Samples sum = Signal(0, 4);
    for (std::size_t i = 0; i < 4; ++i) sum[i] += Signal(1, 4)[i];
    for (int i = 0; i < 3; ++i) EXPECT_THAT(Process(*growing, 4), ElementsAre(sum, sum));
}

TEST(Vst2AudioFilterTest, ChannelsThatAnEffectTakesOnLaterAreSilentAndGoNowhere) {
    const Filter growing = MakeVst("good/zel_growing");
    ASSERT_TRUE(growing->StartProcessing(kRate, 64));
    growing->SetParameterValue(0, 0.75f);
    EXPECT_EQ(growing->GetEffectChannelCount(AudioFilter::kInput), 2);
    EXPECT_EQ(growing->GetEffectChannelCount(AudioFilter::kOutput), 2);
    Samples sum = Signal(0, 64);
    for (std::size_t i = 0; i < 64; ++i) sum[i] += Signal(1, 64)[i];
    for (int i = 0; i < 3; ++i) EXPECT_THAT(Process(*growing, 64), ElementsAre(sum, sum));
    growing->SetParameterValue(0, 0.0f);
    EXPECT_THAT(Process(*growing, 64), ElementsAre(sum, sum));
}

TEST(Vst2AudioFilterTest, AnEffectThatClaimsTooManyChannelsFallsSilent) {
    const Filter growing = MakeVst("good/zel_growing");
    ASSERT_TRUE(growing->StartProcessing(kRate, 64));
    growing->SetParameterValue(0, 1.0f);
    ExpectSilence(*growing, 64);
    EXPECT_FALSE(growing->StartProcessing(kRate, 64));
    growing->SetParameterValue(0, 0.0f);
    EXPECT_TRUE(growing->StartProcessing(kRate, 64));
}

TEST(Vst2AudioFilterTest, EachComponentOfAShellIsMade) {
    const Filter mono = MakeVst("good/zel_shell", 0);
    const Filter stereo = MakeVst("good/zel_shell", 1);
    const Filter tone = MakeVst("good/zel_shell", 2);
    EXPECT_EQ(Text(mono->GetComponentID()), "VST-5A536831");
    EXPECT_THAT(Names(*mono), ElementsAre("Level"));
    EXPECT_THAT(Names(*stereo), ElementsAre("Left", "Right"));
    EXPECT_THAT(Names(*tone), ElementsAre("Pitch"));
    EXPECT_EQ(tone->GetEffectChannelCount(AudioFilter::kInput), 0);
    EXPECT_EQ(Text(stereo->GetName()), "Shell Stereo");
}

TEST(Vst2AudioFilterTest, TwoFiltersOfOneModuleAreIndependent) {
    const Filter first = MakeVst("good/zel_many");
    const Filter second = MakeVst("good/zel_many");
    first->SetParameterValue(0, 0.25f);
    EXPECT_EQ(second->GetParameterValue(0), 0.5f);
    ASSERT_TRUE(first->StartProcessing(kRate, 64));
    ExpectSilence(*second, 64);
    ASSERT_TRUE(second->StartProcessing(48000, 32));
    EXPECT_EQ(Process(*first, 64)[0], Times(0.5f, Signal(0, 64)));
    EXPECT_EQ(Process(*second, 32)[0], Signal(0, 32));
}

TEST(Vst2AudioFilterTest, AnExceptionAtTheEndChangesNothing) {
    const Filter filter = MakeVst("bad/throws_when_closed");
    EXPECT_TRUE(filter->StartProcessing(kRate, 64));
}

TEST(Vst2AudioFilterTest, PluginsOfTheSystemWorkToo) {
    const std::string path = "/usr/lib/vst/MaBitcrush-vst.so";
    if (!FindInstalledPlugins().contains(path)) GTEST_SKIP() << "the package dpf-plugins-vst is not installed";
    const auto descriptors =
        AudioFilterDescriptor::ReadModule(PluginLocator(kTechnologyVST, zelcore::utility::UTF8to16(path)));
    const Filter filter = descriptors.at(0)->CreateFilter();
    ASSERT_GT(filter->GetParameterCount(), 0);
    for (const std::string& name : Names(*filter)) EXPECT_NE(name, "");
    for (int i = 0; i < filter->GetParameterCount(); ++i) EXPECT_NE(ValueText(*filter, i), "");
    ASSERT_TRUE(filter->StartProcessing(kRate, 512));
    const std::vector<Samples> sound = Process(*filter, 512);
    ASSERT_FALSE(sound.empty());
    EXPECT_TRUE(std::any_of(sound[0].begin(), sound[0].end(), [](float value) { return value != 0.0f; }));
}
