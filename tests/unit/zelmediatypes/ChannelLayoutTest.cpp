#include <string>

#include <gtest/gtest.h>
#include <zelcore/Utf.h>
#include <zelmediatypes/ChannelLayout.h>

using namespace zelmediatypes;
using zelcore::utility::AsciiToUTF16;

namespace {

struct Known {
    std::size_t count;
    const char* name;
    const char* displayName;
};

constexpr Known kKnown[] = {{1, "mono", "Mono"},    {2, "stereo", "Stereo"}, {3, "3.0", "3.0"}, {4, "quad", "Quad"},
                            {5, "5.0", "5.0"},      {6, "5.1", "5.1"},       {7, "6.1", "6.1"}, {8, "7.1", "7.1"},
                            {10, "7.1.2", "7.1.2"}, {12, "7.1.4", "7.1.4"}};

}  // namespace

TEST(ChannelLayoutTest, UsualCountsHaveTheirLayout) {
    for (const Known& known : kKnown) {
        const ChannelLayout layout = ChannelLayout::ForChannelCount(known.count);
        EXPECT_EQ(layout.GetChannelCount(), known.count);
        EXPECT_EQ(layout, ChannelLayout::FromName(known.name)) << known.name;
        EXPECT_EQ(layout.GetDisplayName(), AsciiToUTF16(known.displayName)) << known.name;
        for (std::size_t i = 0; i < known.count; ++i) {
            EXPECT_NE(layout.GetLabel(i), kChannelDiscrete) << known.name;
            EXPECT_EQ(layout.FindChannel(layout.GetLabel(i)), static_cast<int>(i)) << known.name << ": a label twice";
        }
    }
}

TEST(ChannelLayoutTest, SurroundChannelsComeInTheirOrder) {
    EXPECT_EQ(ChannelLayout::FromName("5.1"), ChannelLayout({kChannelLeft, kChannelRight, kChannelCenter, kChannelLFE,
                                                             kChannelLeftSurround, kChannelRightSurround}));
    EXPECT_EQ(ChannelLayout::FromName("7.1.4"),
              ChannelLayout({kChannelLeft, kChannelRight, kChannelCenter, kChannelLFE, kChannelLeftSurround,
                             kChannelRightSurround, kChannelLeftRear, kChannelRightRear, kChannelLeftTopFront,
                             kChannelRightTopFront, kChannelLeftTopRear, kChannelRightTopRear}));
}

TEST(ChannelLayoutTest, OtherCountsAreDiscrete) {
    for (const std::size_t count : {9u, 11u, 13u, 16u, 100u}) {
        const ChannelLayout layout = ChannelLayout::ForChannelCount(count);
        EXPECT_EQ(layout.GetChannelCount(), count);
        EXPECT_EQ(layout.GetLabel(0), kChannelDiscrete);
        EXPECT_EQ(layout.FindChannel(kChannelLeft), -1);
        EXPECT_EQ(layout.GetDisplayName(), AsciiToUTF16(std::to_string(count) + " channels"));
    }
}

TEST(ChannelLayoutTest, NoChannels) {
    EXPECT_EQ(ChannelLayout().GetChannelCount(), 0u);
    EXPECT_EQ(ChannelLayout::ForChannelCount(0), ChannelLayout());
    EXPECT_EQ(ChannelLayout().GetDisplayName(), AsciiToUTF16("0 channels"));
}

TEST(ChannelLayoutTest, NumbersNameDiscreteChannels) {
    EXPECT_EQ(ChannelLayout::FromName("16"), ChannelLayout(std::vector<ChannelLabel>(16, kChannelDiscrete)));
    EXPECT_EQ(ChannelLayout::FromName("64").GetChannelCount(), 64u);
    EXPECT_EQ(ChannelLayout::FromName("2"), ChannelLayout({kChannelDiscrete, kChannelDiscrete}));
    EXPECT_EQ(ChannelLayout::FromName("1").GetDisplayName(), AsciiToUTF16("1 channel"));
}

TEST(ChannelLayoutTest, AnythingElseNamesNoChannels) {
    for (const char* const name :
         {"", "0", "65", "99999999999999999999999", "-2", "+2", " 2", "2 ", "2x", "Stereo", "5.1.0", "stereo2", "0x10"})
        EXPECT_EQ(ChannelLayout::FromName(name), ChannelLayout()) << name;
}

TEST(ChannelLayoutTest, BeyondTheEndIsDiscrete) {
    const ChannelLayout stereo = ChannelLayout::FromName("stereo");
    EXPECT_EQ(stereo.GetLabel(1), kChannelRight);
    EXPECT_EQ(stereo.GetLabel(2), kChannelDiscrete);
    EXPECT_EQ(stereo.GetLabel(static_cast<std::size_t>(-1)), kChannelDiscrete);
}

TEST(ChannelLayoutTest, ChannelsReadByLabelOrByNumberFromOne) {
    EXPECT_EQ(ChannelLayout::FromName("5.1").GetChannelDisplayName(3), AsciiToUTF16("LFE"));
    EXPECT_EQ(ChannelLayout::FromName("16").GetChannelDisplayName(2), AsciiToUTF16("Channel 3"));
}

TEST(ChannelLayoutTest, LabelsInAnUnusualOrderHaveNoLayoutName) {
    EXPECT_EQ(ChannelLayout({kChannelRight, kChannelLeft}).GetDisplayName(), AsciiToUTF16("2 channels"));
}

TEST(ChannelLayoutTest, FirstOfEqualLabelsIsFound) {
    EXPECT_EQ(ChannelLayout({kChannelDiscrete, kChannelLeft, kChannelLeft}).FindChannel(kChannelLeft), 1);
}
