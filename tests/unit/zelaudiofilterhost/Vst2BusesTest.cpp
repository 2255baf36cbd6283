#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BusesForTest.h"
#include "Vst2FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

typedef boost::intrusive_ptr<AudioFilter> Filter;

std::vector<std::string> Inputs(const Filter& filter) { return BusTexts(*filter, AudioFilter::kInput); }
std::vector<std::string> Outputs(const Filter& filter) { return BusTexts(*filter, AudioFilter::kOutput); }

/// A component of zel_pins, by its name.
Filter MakePins(const std::string& name) {
    for (const auto& descriptor : ReadVst("good/zel_pins")) {
        const zelcore::ustring& text = descriptor->GetComponent().name;
        if (std::string(text.begin(), text.end()) == name) return descriptor->CreateFilter();
    }
    throw std::invalid_argument(name);
}

}  // namespace

TEST(Vst2BusesTest, WithoutAWordTheChannelsAreTheUsualOnesOfTheirNumber) {
    const Filter gain = MakeVst("good/zel_plain");
    EXPECT_THAT(Inputs(gain), ElementsAre(": L R"));
    EXPECT_THAT(Outputs(gain), ElementsAre(": L R"));
    const Filter widener = MakePins("Widener");
    EXPECT_THAT(Inputs(widener), ElementsAre(": M"));
    EXPECT_THAT(Outputs(widener), ElementsAre(": L R"));
    EXPECT_EQ(Inputs(MakePins("Sixty-four")), std::vector<std::string>{": " + Signs(Layout("64"))});
}

TEST(Vst2BusesTest, InputsBeyondTheOutputsAreASideChain) {
    EXPECT_THAT(Inputs(MakeVst("good/zel_sidechain")), ElementsAre(": L R", "Side-chain (aux): L R"));
    EXPECT_THAT(Inputs(MakePins("Mono key")), ElementsAre(": L R", "Side-chain (aux): M"));
    EXPECT_THAT(Outputs(MakeVst("good/zel_sidechain")), ElementsAre(": L R"));
}

TEST(Vst2BusesTest, WithoutOutputsAllInputsAreMain) {
    EXPECT_THAT(Inputs(MakePins("Meter")), ElementsAre(": L R Ls Rs"));
    EXPECT_THAT(Outputs(MakePins("Meter")), IsEmpty());
}

TEST(Vst2BusesTest, ADirectionWithoutChannelsHasNoBus) {
    EXPECT_THAT(Inputs(MakeVst("good/zel_synth")), IsEmpty());
    EXPECT_THAT(Inputs(MakePins("Nothing")), IsEmpty());
    EXPECT_THAT(Outputs(MakePins("Nothing")), IsEmpty());
}

TEST(Vst2BusesTest, SpeakersThatTheEffectNamesAreItsChannels) {
    for (const char* name : {"5.1", "Groups"}) {
        EXPECT_THAT(Inputs(MakePins(name)), ElementsAre(": L R C Lfe Ls Rs")) << name;
        EXPECT_THAT(Outputs(MakePins(name)), ElementsAre(": L R C Lfe Ls Rs")) << name;
    }
    EXPECT_THAT(Inputs(MakePins("7.1")), ElementsAre(": L R C Lfe Lr Rr Ls Rs"));
    EXPECT_THAT(Inputs(MakePins("Side-chain")), ElementsAre(": L R C Lfe Ls Rs", "Side-chain (aux): L R"));
}

TEST(Vst2BusesTest, EveryArrangementHasItsChannels) {
    const auto descriptors = ReadVst("good/zel_arrangements");
    const std::vector<std::string> expected = {"M",
                                               "L R",
                                               "Ls Rs",
                                               "Lc Rc",
                                               "Ls Rs",
                                               "C Lfe",
                                               "L R C",
                                               "L R Cs",
                                               "L R C Lfe",
                                               "L R Lfe Cs",
                                               "L R C Cs",
                                               "L R Ls Rs",
                                               "L R C Lfe Cs",
                                               "L R Lfe Ls Rs",
                                               "L R C Ls Rs",
                                               "L R C Lfe Ls Rs",
                                               "L R C Ls Rs Cs",
                                               "L R Lr Rr Ls Rs",
                                               "L R C Lfe Ls Rs Cs",
                                               "L R Lfe Lr Rr Ls Rs",
                                               "L R C Ls Rs Lc Rc",
                                               "L R C Lr Rr Ls Rs",
                                               "L R C Lfe Ls Rs Lc Rc",
                                               "L R C Lfe Lr Rr Ls Rs",
                                               "L R C Ls Rs Lc Rc Cs",
                                               "L R C Lr Rr Cs Ls Rs",
                                               "L R C Lfe Ls Rs Lc Rc Cs",
                                               "L R C Lfe Lr Rr Cs Ls Rs",
                                               "L R C Lfe Ls Rs Ltf Ctf Rtf Ltr Rtr Lfe2"};
    ASSERT_EQ(descriptors.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const Filter filter = descriptors[i]->CreateFilter();
        EXPECT_THAT(Inputs(filter), ElementsAre(": " + expected[i])) << i;
        // Of these it says nothing.
        const std::string usual = Signs(zelmediatypes::MakeChannelLayoutForCount(Layout(expected[i]).size()));
        EXPECT_THAT(Outputs(filter), ElementsAre(": " + usual)) << i;
    }
}

TEST(Vst2BusesTest, WhatDoesNotNameEachChannelOnceIsNotBelieved) {
    EXPECT_THAT(Inputs(MakePins("Pairs")), ElementsAre(": L R Ls Rs"));
    EXPECT_THAT(Inputs(MakePins("Half")), ElementsAre(": L R C Ls Rs"));
    EXPECT_THAT(Inputs(MakePins("Unflagged")), ElementsAre(": L R"));
    EXPECT_THAT(Inputs(MakePins("Own")), ElementsAre(": L R"));
}

TEST(Vst2BusesTest, NonsenseAboutSpeakersIsHarmless) {
    const auto descriptors = ReadVst("bad/nonsense_pins");
    ASSERT_EQ(descriptors.size(), 6u);
    for (const auto& descriptor : descriptors) {
        const Filter filter = descriptor->CreateFilter();
        EXPECT_THAT(Inputs(filter), ElementsAre(": L R", "Side-chain (aux): M"));
        EXPECT_THAT(Outputs(filter), ElementsAre(": L R"));
        ASSERT_TRUE(filter->StartProcessing(48000, 16));
        EXPECT_THAT(Process(*filter, 16), ElementsAre(Signal(0, 16), Signal(1, 16)));
    }
    EXPECT_THAT(Inputs(MakeVst("bad/throws_when_processing")), ElementsAre(": L R"));
}

TEST(Vst2BusesTest, TheBusesAreThoseThatTheEffectHadWhenItWasMade) {
    const Filter growing = MakeVst("good/zel_growing");
    growing->SetParameterValue(0, 0.75f);
    EXPECT_THAT(Inputs(growing), ElementsAre(": L R"));
    EXPECT_EQ(growing->GetEffectChannelCount(AudioFilter::kInput), 2);
}

TEST(Vst2BusesTest, ATrackOfSevenAndOneIsConnectedByLabelAcrossBothOrders) {
    const Filter filter = MakePins("7.1");
    ASSERT_TRUE(filter->SetTargetFormat(Layout("7.1"), AudioFilterBusDescription()));
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kInput)), "0 1 2 3 6 7 4 5");
}

TEST(Vst2BusesTest, ASideChainIsConnectedWithTheTracks) {
    const Filter filter = MakeVst("good/zel_sidechain");
    ASSERT_TRUE(filter->SetTargetFormat(Layout("stereo"), Main("mono", "Speech")));
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kInput)), "0 1 2 2");
    ASSERT_TRUE(filter->SetTargetFormat(Layout("stereo"), Main("stereo", "Speech")));
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kInput)), "0 1 2 3");
}
