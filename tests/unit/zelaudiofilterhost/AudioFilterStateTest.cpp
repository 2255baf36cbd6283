#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <StateEnvelope.h>
#include <zelcore/Utf.h>

#include "DescribeForTest.h"
#include "support/InstalledPlugins.h"
#include "support/PluginLeaks.h"
#include "support/WaitFor.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::Each;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

typedef boost::intrusive_ptr<AudioFilter> Filter;
typedef AudioFilter::State State;

constexpr double kRate = 48000.0;
constexpr int kFrames = 64;

enum Odd : std::size_t { kNone, kRefuses, kThrows, kLarge, kApart };

Filter MakeOdd(Odd odd) { return ReadVst3(TestPlugin("vst3/good/ZelStateOdd3.vst3")).at(odd)->CreateFilter(); }

std::vector<float> GetValues(const AudioFilter& filter) {
    std::vector<float> values;
    for (int i = 0; i < filter.GetParameterCount(); ++i) values.push_back(filter.GetParameterValue(i));
    return values;
}

std::vector<Samples> Hear(AudioFilter& filter) {
    EXPECT_TRUE(filter.StartProcessing(kRate, kFrames));
    std::vector<Samples> sound = Process(filter, kFrames);
    filter.StopProcessing();
    return sound;
}

int CountChanges(AudioFilter& filter, const std::function<void()>& act) {
    int count = 0;
    const boost::signals::scoped_connection connection(filter.GetStateChangedSignal().connect([&] { ++count; }));
    act();
    return count;
}

/// A state that only the content of makes no sense for the filter.
State Wrap(const AudioFilter& filter, StateEnvelope::Content content, std::vector<State> parts) {
    return StateEnvelope{content, std::move(parts)}.Pack(filter.GetComponentID());
}

}  // namespace

TEST(AudioFilterStateTest, EveryGoodPluginGivesAStateThatANewOneOfItTakes) {
    std::size_t count = 0;
    for (const char* const kind : {"vst", "vst3"}) {
        for (const auto& entry : std::filesystem::directory_iterator(TestPlugin(std::string(kind) + "/good"))) {
            const std::string path = entry.path().string();
            const auto descriptors =
                std::string(kind) == "vst" ? ReadVst("good/" + entry.path().stem().string()) : ReadVst3(path);
            // Those that go wrong when they are given any.
            const std::string name = entry.path().stem().string();
            if (name == "ZelStateOdd3" || name == "zel_chunk_throws" || name == "ZelCurious3") continue;
            for (const auto& descriptor : descriptors) {
                const State state = descriptor->CreateFilter()->GetState();
                EXPECT_THAT(state, Not(IsEmpty())) << path;
                EXPECT_TRUE(descriptor->CreateFilter()->SetState(state)) << path;
                ++count;
            }
        }
    }
    EXPECT_GE(count, 40u);
}

// VST2

TEST(AudioFilterStateTest, ValuesOfParametersComeBackInANewVst2Effect) {
    const Filter first = MakeVst("good/zel_gain");
    first->SetParameterValue(0, 0.25f);
    first->SetParameterValue(1, 0.75f);
    const Filter second = MakeVst("good/zel_gain");
    EXPECT_EQ(CountChanges(*second, [&] { EXPECT_TRUE(second->SetState(first->GetState())); }), 1);
    EXPECT_EQ(GetValues(*second), GetValues(*first));
    EXPECT_EQ(Hear(*second), Hear(*first));
    EXPECT_EQ(second->GetState(), first->GetState());
}

TEST(AudioFilterStateTest, ABlockOfBytesBringsBackMoreThanParameters) {
    const Filter first = MakeVst("good/zel_chunk");
    for (const float value : {0.1f, 0.2f, 0.25f}) first->SetParameterValue(0, value);
    const Filter second = MakeVst("good/zel_chunk");
    second->SetParameterValue(0, 0.25f);
    ASSERT_NE(Hear(*second), Hear(*first)) << "turned once, not three times";
    EXPECT_TRUE(second->SetState(first->GetState()));
    EXPECT_EQ(Hear(*second), Hear(*first));
    EXPECT_EQ(second->GetParameterValue(0), 0.25f);
}

TEST(AudioFilterStateTest, TheProgramComesBackWithItsValues) {
    const Filter first = MakeVst("good/zel_programs");
    first->SetParameterValue(1, 1.0f);
    ASSERT_EQ(first->GetParameterValue(0), 0.3f) << "the last program";
    first->SetParameterValue(0, 0.9f);
    const Filter second = MakeVst("good/zel_programs");
    EXPECT_TRUE(second->SetState(first->GetState()));
    EXPECT_EQ(GetValues(*second), GetValues(*first));
    // And it is that program: its number is in the state.
    EXPECT_EQ(second->GetState(), first->GetState());
}

TEST(AudioFilterStateTest, AnEffectThatLiesAboutItsBlockOfBytesGivesNoState) {
    const Filter filter = MakeVst("good/zel_chunk_lies");
    EXPECT_THAT(filter->GetState(), Not(IsEmpty())) << "its parameters' values";
    for (int lie = 0; lie < filter->GetParameterCount(); ++lie) {
        filter->SetParameterValue(lie, 1.0f);
        EXPECT_THAT(filter->GetState(), IsEmpty()) << lie;
        filter->SetParameterValue(lie, 0.0f);
    }
}

TEST(AudioFilterStateTest, ValuesOfAnEarlierVersionAreTakenByOneThatHasABlockOfBytes) {
    const Filter filter = MakeVst("good/zel_chunk_lies");
    filter->SetParameterValue(0, 0.25f);
    const State state = filter->GetState();
    filter->SetParameterValue(0, 0.5f);
    EXPECT_TRUE(filter->SetState(state));
    EXPECT_EQ(filter->GetParameterValue(0), 0.25f);
}

TEST(AudioFilterStateTest, AVst2EffectThatThrowsGivesNoStateAndTakesNone) {
    const Filter filter = MakeVst("good/zel_chunk_throws");
    const State state = filter->GetState();
    EXPECT_THAT(state, Not(IsEmpty()));
    EXPECT_EQ(CountChanges(*filter, [&] { EXPECT_FALSE(filter->SetState(state)); }), 1);
    filter->SetParameterValue(0, 1.0f);
    EXPECT_THAT(filter->GetState(), IsEmpty());
    const Filter asked = MakeVst("bad/throws_when_asked");
    EXPECT_THAT(asked->GetState(), IsEmpty());
    EXPECT_FALSE(asked->SetState(Wrap(*asked, StateEnvelope::kVst2Values, {State(4), State(8)})));
}

TEST(AudioFilterStateTest, AnotherNumberOfParametersIsTakenAsFarAsItGoes) {
    const Filter filter = MakeVst("good/zel_gain");
    const State quarter = {0, 0, 0x80, 0x3E};
    State values = quarter;
    EXPECT_TRUE(filter->SetState(Wrap(*filter, StateEnvelope::kVst2Values, {State(4), values})));
    EXPECT_EQ(GetValues(*filter), (std::vector<float>{0.25f, 0.5f, 1.0f, 0.0f}));
    for (int i = 0; i < 6; ++i) values.insert(values.end(), quarter.begin(), quarter.end());
    EXPECT_TRUE(filter->SetState(Wrap(*filter, StateEnvelope::kVst2Values, {State(4), values})));
    EXPECT_THAT(GetValues(*filter), Each(0.25f));
}

TEST(AudioFilterStateTest, AProgramThatIsNotThereIsLeftOut) {
    const Filter filter = MakeVst("good/zel_programs");
    for (const std::uint8_t program : State{3, 200}) {
        const State number = {program, 0, 0, program};
        EXPECT_TRUE(filter->SetState(Wrap(*filter, StateEnvelope::kVst2Values, {number, State()})));
        EXPECT_EQ(filter->GetParameterValue(0), 0.1f);
    }
}

TEST(AudioFilterStateTest, AVst2EffectIsNotGivenWhatNoStateOfItsHas) {
    const Filter filter = MakeVst("good/zel_gain");
    filter->SetParameterValue(0, 0.25f);
    const State noNumber = {0, 0, 0xC0, 0x7F};
    const State tooMuch = {0, 0, 0, 0x40};
    const State tooLittle = {0, 0, 0x80, 0xBF};
    const std::vector<State> wrong = {
        State(),
        State(100),
        Wrap(*MakeVst("good/zel_plain"), StateEnvelope::kVst2Values, {State(4), State(16)}),
        Wrap(*filter, StateEnvelope::kVst2Chunk, {State(4), State(16)}),
        Wrap(*filter, StateEnvelope::kVst3Parts, {State(4), State(16), State()}),
        Wrap(*filter, StateEnvelope::kVst2Values, {State(4)}),
        Wrap(*filter, StateEnvelope::kVst2Values, {State(4), State(16), State()}),
        Wrap(*filter, StateEnvelope::kVst2Values, {State(5), State(16)}),
        Wrap(*filter, StateEnvelope::kVst2Values, {State(4), State(15)}),
        Wrap(*filter, StateEnvelope::kVst2Values, {State(4), noNumber}),
        Wrap(*filter, StateEnvelope::kVst2Values, {State(4), tooMuch}),
        Wrap(*filter, StateEnvelope::kVst2Values, {State(4), tooLittle})};
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        EXPECT_EQ(CountChanges(*filter, [&] { EXPECT_FALSE(filter->SetState(wrong[i])) << i; }), 0);
        EXPECT_EQ(filter->GetParameterValue(0), 0.25f) << i;
    }
}

// VST3

TEST(AudioFilterStateTest, BothHalvesOfAVst3EffectGetTheirStateBack) {
    const Filter first = MakeVst3("good/ZelState3");
    first->SetParameterValue(0, 0.25f);
    first->SetParameterValue(1, 0.875f);
    Hear(*first);
    const Filter second = MakeVst3("good/ZelState3");
    EXPECT_EQ(CountChanges(*second, [&] { EXPECT_TRUE(second->SetState(first->GetState())); }), 1);
    EXPECT_EQ(GetValues(*second), (std::vector<float>{0.25f, 0.875f}));
    const std::vector<Samples> sound = Hear(*first);
    EXPECT_EQ(sound[0][0], Signal(0, 1)[0] * 0.25f + 1.0f / 64.0f) << "a block with a change";
    EXPECT_EQ(Hear(*second), sound);
    EXPECT_EQ(second->GetState(), first->GetState());
}

TEST(AudioFilterStateTest, ValuesThatNoBlockHasTakenYetAreKeptToo) {
    const Filter first = MakeVst3("good/ZelGain3");
    first->SetParameterValue(0, 0.25f);
    const State state = first->GetState();
    const Filter second = MakeVst3("good/ZelGain3");
    EXPECT_TRUE(second->SetState(state));
    EXPECT_EQ(second->GetParameterValue(0), 0.25f);
    EXPECT_EQ(second->GetState(), state) << "still on their way";
    EXPECT_EQ(Hear(*second), Hear(*first));
    EXPECT_EQ(Hear(*second)[0], Scaled(Signal(0, kFrames), 0.5f));
}

TEST(AudioFilterStateTest, ValuesThatNoBlockHasTakenYetDoNotOutliveAStateThatIsSet) {
    const Filter filter = MakeVst3("good/ZelGain3");
    const State half = filter->GetState();
    filter->SetParameterValue(0, 1.0f);
    EXPECT_TRUE(filter->SetState(half));
    EXPECT_EQ(filter->GetParameterValue(0), 0.5f);
    EXPECT_EQ(Hear(*filter)[0], Signal(0, kFrames));
    EXPECT_EQ(filter->GetParameterValue(0), 0.5f);
}

TEST(AudioFilterStateTest, AControllerThatLearnsNothingOfItsComponentsStateDoesNotUndoIt) {
    const Filter filter = MakeOdd(kApart);
    filter->SetParameterValue(0, 0.25f);
    const std::vector<Samples> quarter = Hear(*filter);
    const State state = filter->GetState();
    filter->SetParameterValue(0, 0.5f);
    EXPECT_TRUE(filter->SetState(state));
    EXPECT_EQ(Hear(*filter), quarter);
    EXPECT_EQ(quarter[0], Scaled(Signal(0, kFrames), 0.25f));
}

TEST(AudioFilterStateTest, WhichParametersAreShownIsFoundOutAnewWithAState) {
    const Filter filter = MakeOdd(kApart);
    filter->SetParameterValue(0, 1.0f);
    Hear(*filter);
    const State hides = filter->GetState();
    filter->SetParameterValue(0, 0.25f);
    Hear(*filter);
    const State shows = filter->GetState();
    EXPECT_EQ(filter->GetParameterCount(), 2);
    EXPECT_TRUE(filter->SetState(hides));
    EXPECT_EQ(filter->GetParameterCount(), 1);
    EXPECT_TRUE(filter->SetState(shows));
    EXPECT_EQ(filter->GetParameterCount(), 2);
}

TEST(AudioFilterStateTest, OfAComponentThatKeepsNoStateTheValuesAreKept) {
    const Filter first = MakeOdd(kNone);
    first->SetParameterValue(0, 0.25f);
    Hear(*first);
    const Filter second = MakeOdd(kNone);
    EXPECT_TRUE(second->SetState(first->GetState()));
    EXPECT_EQ(second->GetParameterValue(0), 0.25f);
    EXPECT_EQ(Hear(*second), Hear(*first));
}

TEST(AudioFilterStateTest, AVst3EffectThatRefusesItsStateIsToldOf) {
    const Filter filter = MakeOdd(kRefuses);
    EXPECT_FALSE(filter->SetState(filter->GetState()));
}

TEST(AudioFilterStateTest, AVst3EffectThatThrowsGivesNoStateAndTakesNone) {
    const Filter filter = MakeOdd(kThrows);
    const State state = filter->GetState();
    EXPECT_THAT(state, Not(IsEmpty()));
    EXPECT_FALSE(filter->SetState(state));
    filter->SetParameterValue(0, 1.0f);
    Hear(*filter);
    EXPECT_THAT(filter->GetState(), IsEmpty());
}

TEST(AudioFilterStateTest, AVst3EffectThatWritesWithoutEndGivesNoState) {
    const Filter filter = MakeOdd(kLarge);
    EXPECT_THAT(filter->GetState(), SizeIs(testing::Gt(1u << 20)));
    filter->SetParameterValue(0, 1.0f);
    Hear(*filter);
    EXPECT_THAT(filter->GetState(), IsEmpty());
}

TEST(AudioFilterStateTest, AVst3EffectIsNotGivenWhatNoStateOfItsHas) {
    const Filter filter = MakeVst3("good/ZelGain3");
    filter->SetParameterValue(0, 0.25f);
    const State number = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F};
    State noNumber = number;
    noNumber[10] = 0xF8;
    noNumber[11] = 0x7F;
    State tooMuch = number;
    tooMuch[11] = 0x40;
    const State gain(16);
    const std::vector<State> wrong = {
        State(),
        State(100),
        MakeVst3("good/ZelState3")->GetState(),
        Wrap(*filter, StateEnvelope::kVst2Chunk, {gain, {}, {}}),
        Wrap(*filter, StateEnvelope::kVst3Parts, {gain, {}}),
        Wrap(*filter, StateEnvelope::kVst3Parts, {gain, {}, {}, {}}),
        Wrap(*filter, StateEnvelope::kVst3Parts, {gain, {}, State(11)}),
        Wrap(*filter, StateEnvelope::kVst3Parts, {gain, {}, noNumber}),
        Wrap(*filter, StateEnvelope::kVst3Parts, {gain, {}, tooMuch}),
        Wrap(*filter, StateEnvelope::kVst3Parts,
             {gain, {}, State(12 * (2 * std::size_t(PluginComponentInfo::kMaxParameters) + 1))})};
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        EXPECT_EQ(CountChanges(*filter, [&] { EXPECT_FALSE(filter->SetState(wrong[i])) << i; }), 0);
        EXPECT_EQ(filter->GetParameterValue(0), 0.25f) << i;
    }
    EXPECT_TRUE(filter->SetState(Wrap(*filter, StateEnvelope::kVst3Parts, {gain, {}, number})));
    EXPECT_EQ(filter->GetParameterValue(0), 1.0f);
}

TEST(AudioFilterStateTest, ValuesOfParametersThatAreGoneAreLeftOut) {
    const Filter filter = MakeVst3("good/ZelGain3");
    State values = {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F};
    EXPECT_TRUE(filter->SetState(Wrap(*filter, StateEnvelope::kVst3Parts, {{}, {}, values})));
    EXPECT_EQ(GetValues(*filter), (std::vector<float>{0.5f, 0.5f}));
}

// While started

class AudioFilterStateBesideSoundTest : public testing::TestWithParam<std::string> {};

TEST_P(AudioFilterStateBesideSoundTest, StatesAreGivenAndAskedBesideBlocks) {
    const bool isVst3 = GetParam().starts_with("good/Z");
    const Filter filter = isVst3 ? MakeVst3(GetParam()) : MakeVst(GetParam());
    filter->SetParameterValue(0, 0.25f);
    const State quarter = filter->GetState();
    ASSERT_TRUE(filter->StartProcessing(kRate, kFrames));
    std::atomic<bool> ends{false};
    std::atomic<long> blocks{0};
    std::thread sound([&] {
        while (!ends) {
            Process(*filter, kFrames);
            ++blocks;
        }
    });
    for (int i = 0; i < 300; ++i) {
        filter->SetParameterValue(0, i % 2 == 0 ? 1.0f : 0.0f);
        EXPECT_TRUE(filter->SetState(quarter));
        EXPECT_EQ(filter->GetParameterValue(0), 0.25f);
        EXPECT_THAT(filter->GetState(), Not(IsEmpty()));
    }
    const long before = blocks;
    EXPECT_TRUE(WaitFor([&] { return blocks > before + 2; }));
    ends = true;
    sound.join();
    EXPECT_EQ(filter->GetParameterValue(0), 0.25f);
}

TEST(AudioFilterStateTest, AStateThatIsAskedForBesideBlocksHasTheNewestValue) {
    const Filter filter = MakeVst3("good/ZelGain3");
    const Filter reader = MakeVst3("good/ZelGain3");
    ASSERT_TRUE(filter->StartProcessing(kRate, kFrames));
    std::atomic<bool> ends{false};
    std::thread sound([&] {
        while (!ends) Process(*filter, kFrames);
    });
    for (int i = 0; i < 3000; ++i) {
        const float value = static_cast<float>(i % 64) / 64.0f;
        filter->SetParameterValue(0, value);
        EXPECT_TRUE(reader->SetState(filter->GetState()));
        EXPECT_EQ(reader->GetParameterValue(0), value) << i;
    }
    ends = true;
    sound.join();
}

INSTANTIATE_TEST_SUITE_P(Formats, AudioFilterStateBesideSoundTest,
                         testing::Values("good/zel_gain", "good/zel_chunk", "good/ZelGain3", "good/ZelState3"),
                         [](const auto& test) { return test.param.substr(5); });

TEST(AudioFilterStateTest, WhoIsToldMayLetGoOfTheFilter) {
    for (const char* const name : {"good/zel_gain", "good/ZelGain3"}) {
        Filter filter = std::string(name) == "good/zel_gain" ? MakeVst(name) : MakeVst3(name);
        const State state = filter->GetState();
        filter->GetStateChangedSignal().connect([&filter] { filter.reset(); });
        AudioFilter& gone = *filter;
        EXPECT_TRUE(gone.SetState(state));
        EXPECT_FALSE(filter);
    }
}

// Plug-ins of other people

namespace {

struct Installed {
    const char* path;
    TechnologyType technology;
};

class InstalledPluginStateTest : public testing::TestWithParam<Installed> {};

}  // namespace

TEST_P(InstalledPluginStateTest, AChangedParameterComesBackInANewInstanceAndSoundsTheSame) {
    if (!FindInstalledPlugins().contains(GetParam().path)) GTEST_SKIP() << GetParam().path << " is not installed";
    const IgnorePluginLeaks ignored;
    const auto descriptor = AudioFilterDescriptor::ReadModule(
        PluginLocator(GetParam().technology, zelcore::utility::UTF8to16(std::string(GetParam().path))))[0];
    const Filter first = descriptor->CreateFilter();
    const std::vector<float> usual = GetValues(*first);
    for (int i = 0; i < std::min(first->GetParameterCount(), 4); ++i) first->SetParameterValue(i, 1.0f);
    const State state = first->GetState();
    const Filter second = descriptor->CreateFilter();
    ASSERT_TRUE(second->SetState(state));
    EXPECT_NE(GetValues(*second), usual);
    EXPECT_EQ(GetValues(*second), GetValues(*first));
    EXPECT_EQ(Hear(*second), Hear(*first));
}

INSTANTIATE_TEST_SUITE_P(Debian, InstalledPluginStateTest,
                         testing::Values(Installed{"/usr/lib/vst/ZamComp-vst.so", kTechnologyVST},
                                         Installed{"/usr/lib/vst3/ZamComp.vst3", kTechnologyVST3},
                                         Installed{"/usr/lib/vst/lsp-plugins/compressor-stereo.so", kTechnologyVST}),
                         [](const auto& test) {
                             return (test.param.technology == kTechnologyVST3 ? "Vst3" : "Vst2") +
                                    std::to_string(test.index);
                         });
