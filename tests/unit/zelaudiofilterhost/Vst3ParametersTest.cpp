#include <limits>

#include <gtest/gtest.h>
#include <zelcore/Utf.h>

#include "DescribeForTest.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinite = std::numeric_limits<float>::infinity();

std::string NameOf(const AudioFilter& filter, int index) { return Text(filter.GetParameterInfo(index)->GetName()); }
std::string LabelOf(const AudioFilter& filter, int index) { return Text(filter.GetParameterInfo(index)->GetLabel()); }
std::string TextOf(const AudioFilter& filter, int index) { return Text(filter.GetParameterValueString(index)); }

void ExpectNothing(AudioFilter& filter, int index) {
    filter.SetParameterValue(index, 0.75f);
    EXPECT_EQ(NameOf(filter, index), "") << index;
    EXPECT_EQ(LabelOf(filter, index), "") << index;
    EXPECT_EQ(TextOf(filter, index), "") << index;
    EXPECT_EQ(filter.GetParameterValue(index), 0.0f) << index;
}

}  // namespace

TEST(Vst3ParametersTest, TwoThousandAreFoundByTheirIndexWhateverTheirIdsAre) {
    const auto filter = MakeVst3("good/ZelMany3");
    ASSERT_EQ(filter->GetParameterCount(), 2000);
    EXPECT_EQ(NameOf(*filter, 0), "Gain");
    EXPECT_EQ(NameOf(*filter, 1999), "Parameter 1999");
    for (int i = 0; i < 2000; ++i) filter->SetParameterValue(i, static_cast<float>(i) / 2048.0f);
    for (int i = 0; i < 2000; ++i) ASSERT_EQ(filter->GetParameterValue(i), static_cast<float>(i) / 2048.0f) << i;
    EXPECT_EQ(TextOf(*filter, 1024), "0.500000");
}

TEST(Vst3ParametersTest, AnIndexThatIsNotThereIsHarmless) {
    const auto filter = MakeVst3("good/ZelMany3");
    for (const int index : {-1, 2000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        ExpectNothing(*filter, index);
    }
    EXPECT_EQ(filter->GetParameterValue(0), 0.5f);
}

TEST(Vst3ParametersTest, ValuesAreMovedIntoTheirRangeAndWhatIsNoNumberIsIgnored) {
    const auto filter = MakeVst3("good/ZelMany3");
    filter->SetParameterValue(0, 1.5f);
    EXPECT_EQ(filter->GetParameterValue(0), 1.0f);
    filter->SetParameterValue(0, -kInfinite);
    EXPECT_EQ(filter->GetParameterValue(0), 0.0f);
    filter->SetParameterValue(0, kInfinite);
    EXPECT_EQ(filter->GetParameterValue(0), 1.0f);
    filter->SetParameterValue(0, 0.25f);
    filter->SetParameterValue(0, kNoNumber);
    EXPECT_EQ(filter->GetParameterValue(0), 0.25f);
}

TEST(Vst3ParametersTest, TheControllerShowsTheComponentsValuesFromTheStart) {
    // Only the component's state has the quarter.
    EXPECT_EQ(MakeVst3("good/ZelMany3")->GetParameterValue(1), 0.25f);
}

TEST(Vst3ParametersTest, WhatAPluginHidesIsNotShownAndShiftsTheOthers) {
    const auto filter = MakeVst3("good/ZelHidden3");
    ASSERT_EQ(filter->GetParameterCount(), 2);
    EXPECT_EQ(NameOf(*filter, 0), "Gain");
    EXPECT_EQ(NameOf(*filter, 1), "Mix");
    filter->SetParameterValue(1, 0.75f);
    EXPECT_EQ(filter->GetParameterValue(1), 0.75f);
    EXPECT_NE(filter->GetParameterValue(0), 0.75f);
    ExpectNothing(*filter, 2);
}

TEST(Vst3ParametersTest, WithoutAControllerThereAreNone) {
    const auto filter = MakeVst3("good/ZelPlain3");
    EXPECT_EQ(filter->GetParameterCount(), 0);
    ExpectNothing(*filter, 0);
}

TEST(Vst3ParametersTest, TextsAreMadeFitToBeShown) {
    const auto filter = MakeVst3("good/ZelTexts3");
    ASSERT_EQ(filter->GetParameterCount(), 11);
    ExpectNothing(*MakeVst3("good/ZelTexts3"), 7);
    EXPECT_EQ(NameOf(*filter, 0), "");
    EXPECT_EQ(LabelOf(*filter, 0), "");
    EXPECT_EQ(TextOf(*filter, 0), "");
    EXPECT_EQ(NameOf(*filter, 1), std::string(127, 'T'));
    EXPECT_EQ(LabelOf(*filter, 1), std::string(127, 'U'));
    EXPECT_EQ(TextOf(*filter, 1), std::string(127, 'V'));
    EXPECT_EQ(NameOf(*filter, 3), "Gr\u00F6\u00DFe");
    EXPECT_EQ(LabelOf(*filter, 3), "\u03A9");
    EXPECT_EQ(TextOf(*filter, 3), "\u2212\u221E");
    EXPECT_EQ(NameOf(*filter, 5), "Two lines");
    EXPECT_EQ(LabelOf(*filter, 5), "");
    EXPECT_EQ(TextOf(*filter, 5), "1");
}

TEST(Vst3ParametersTest, TextsWithoutAnEndStopAtTheirBuffers) {
    const auto filter = MakeVst3("good/ZelTexts3");
    EXPECT_EQ(NameOf(*filter, 2), std::string(128, 't'));
    EXPECT_EQ(LabelOf(*filter, 2), std::string(128, 'u'));
    EXPECT_EQ(TextOf(*filter, 2), std::string(128, 'v'));
}

TEST(Vst3ParametersTest, LoneSurrogatesAreReplaced) {
    const auto filter = MakeVst3("good/ZelTexts3");
    EXPECT_EQ(NameOf(*filter, 4), "a\uFFFDb");
    EXPECT_EQ(LabelOf(*filter, 4), "\uFFFD");
    EXPECT_EQ(TextOf(*filter, 4), "1\uFFFD");
}

TEST(Vst3ParametersTest, TheShortTitleStandsInForAMissingOne) {
    EXPECT_EQ(NameOf(*MakeVst3("good/ZelTexts3"), 6), "Short");
}

TEST(Vst3ParametersTest, ParametersThatTheControllerRefusesToDescribeAreEmpty) {
    ExpectNothing(*MakeVst3("good/ZelTexts3"), 7);
}

TEST(Vst3ParametersTest, ValuesThatAreNoneAreZeroAndThoseOutOfRangeAtItsEnd) {
    const auto filter = MakeVst3("good/ZelTexts3");
    EXPECT_EQ(filter->GetParameterValue(8), 0.0f);
    EXPECT_EQ(filter->GetParameterValue(10), 1.0f);
}

TEST(Vst3ParametersTest, ExceptionsOfTheControllerDoNotComeOut) {
    const auto filter = MakeVst3("good/ZelTexts3");
    EXPECT_EQ(NameOf(*filter, 9), "Throws");
    EXPECT_EQ(TextOf(*filter, 9), "");
    EXPECT_EQ(filter->GetParameterValue(9), 0.0f);
    filter->SetParameterValue(9, 0.5f);
}

TEST(Vst3ParametersTest, TheNumberOfParametersFollowsThePlugin) {
    const auto filter = MakeVst3("good/ZelChanging3");
    EXPECT_EQ(filter->GetParameterCount(), 5);
    filter->SetParameterValue(4, 0.5f);
    EXPECT_EQ(filter->GetParameterValue(4), 0.5f);
    filter->SetParameterValue(0, 0.25f);
    EXPECT_EQ(filter->GetParameterCount(), 2);
    ExpectNothing(*filter, 4);
    EXPECT_EQ(NameOf(*filter, 1), "2 of 2");
    filter->SetParameterValue(0, 0.75f);
    EXPECT_EQ(filter->GetParameterCount(), 8);
    EXPECT_EQ(NameOf(*filter, 7), "8 of 8");
    EXPECT_EQ(filter->GetParameterValue(4), 0.5f);
}

TEST(Vst3ParametersTest, WhatTheProcessorTellsIsShownByTheController) {
    const auto filter = MakeVst3("good/ZelMeter3");
    ASSERT_TRUE(filter->StartProcessing(48000, 8));
    EXPECT_EQ(filter->GetParameterValue(1), 0.5f);
    ProcessOnes(*filter);
    EXPECT_EQ(filter->GetParameterValue(1), 1.0f);
    EXPECT_EQ(TextOf(*filter, 1), "1.000000");
    EXPECT_EQ(filter->GetParameterValue(0), 0.5f);
}

TEST(Vst3ParametersTest, WhatTheProcessorToldBeforeAValueWasSetDoesNotReplaceIt) {
    const auto filter = MakeVst3("good/ZelChanging3");
    ASSERT_TRUE(filter->StartProcessing(48000, 8));
    filter->SetParameterValue(0, 0.75f);
    ProcessOnes(*filter);
    filter->SetParameterValue(0, 0.0f);
    // Silenced, it tells nothing.
    ProcessOnes(*filter);
    EXPECT_EQ(filter->GetParameterValue(0), 0.0f);
}

TEST(Vst3ParametersTest, AMeterIsNotMovedFromOutside) {
    const auto filter = MakeVst3("good/ZelMeter3");
    filter->SetParameterValue(1, 0.875f);
    EXPECT_EQ(filter->GetParameterValue(1), 0.5f);
}
