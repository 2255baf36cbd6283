#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BusesForTest.h"
#include "DescribeForTest.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::ElementsAre;

namespace {

/// One that takes what it is asked for, from a stereo one.
boost::intrusive_ptr<AudioFilter> MakeAny() {
    return ReadVst3(TestPlugin("vst3/good/ZelSurround3.vst3")).at(0)->CreateFilter();
}

/// What its main input has after it was put into a track with these channels.
std::string After(const zelmediatypes::AudioChannelLayout& track) {
    const auto filter = MakeAny();
    EXPECT_TRUE(filter->SetTargetFormat(track, AudioFilterBusDescription()));
    EXPECT_EQ(BusTexts(*filter, AudioFilter::kInput)[0].substr(7),
              BusTexts(*filter, AudioFilter::kOutput)[0].substr(8));
    return BusTexts(*filter, AudioFilter::kInput)[0].substr(7);
}

constexpr char kStereo[] = "L R";

}  // namespace

TEST(Vst3SpeakersTest, SpeakersAreChannelsInThePluginsOrder) {
    const auto filter = ReadVst3(TestPlugin("vst3/good/ZelBuses3.vst3")).at(3)->CreateFilter();
    EXPECT_THAT(BusTexts(*filter, AudioFilter::kInput),
                ElementsAre("mono: M", "stereo: L R",
                            // Where there is one pair beside the listener, it is the surround one.
                            "sides: Ls Rs", "surrounds: Ls Rs", "4.0: L R C Cs", "5.1: L R C Lfe Ls Rs",
                            "6.1: L R C Lfe Ls Rs Cs",
                            // Where there are two, the one behind comes first.
                            "7.1: L R C Lfe Lr Rr Ls Rs", "7.1 front: L R C Lfe Ls Rs Lc Rc",
                            "7.1.2: L R C Lfe Lr Rr Ls Rs Ltm Rtm", "7.1.4: L R C Lfe Lr Rr Ls Rs Ltf Rtf Ltr Rtr",
                            "tops: Tc Ctf Ctr Lfe2", "one side: Rr Ls",
                            // These have no place here.
                            "ambisonics: - - - -", "bottom: L R - -", "highest: L -"));
}

TEST(Vst3SpeakersTest, EveryUsualLayoutIsAskedForAndReadBackWithTheSameLabels) {
    for (const std::string_view name : zelmediatypes::GetChannelLayoutNames()) {
        const zelmediatypes::AudioChannelLayout wanted = Layout(std::string(name));
        const zelmediatypes::AudioChannelLayout got = Layout(After(wanted));
        EXPECT_TRUE(got.size() == wanted.size() && std::is_permutation(got.begin(), got.end(), wanted.begin()))
            << name << ": " << Signs(got);
    }
}

TEST(Vst3SpeakersTest, TheOrderOfATrackMakesNoDifference) {
    EXPECT_EQ(After(Layout("C L R Ls Rs Lfe")), "L R C Lfe Ls Rs");
    EXPECT_EQ(After(Layout("Rr Lr Rs Ls Lfe C R L")), "L R C Lfe Lr Rr Ls Rs");
    EXPECT_EQ(After(Layout("C")), "C");
    EXPECT_EQ(After(Layout("L R Lfe2 Tc Ctf Ctr Ltm Rtm Lc Rc Cs")), "L R Lc Rc Cs Tc Ctf Ctr Lfe2 Ltm Rtm");
}

TEST(Vst3SpeakersTest, WhatHasNoArrangementIsNotAskedFor) {
    EXPECT_EQ(After(Layout("L R C -")), kStereo);
    EXPECT_EQ(After(Layout("16")), kStereo);
    EXPECT_EQ(After(Layout("L R L R")), kStereo);
    EXPECT_EQ(After(Layout("C Ls C")), kStereo);
    // It would come back as surround channels.
    EXPECT_EQ(After(Layout("L R Lr Rr")), kStereo);
    EXPECT_EQ(After({}), kStereo);
    EXPECT_EQ(After(zelmediatypes::AudioChannelLayout(1, {static_cast<zelmediatypes::AudioChannelLabel>(30)})),
              kStereo);
}
