#include <string>

#include <gtest/gtest.h>
#include <zelcore/Utf.h>
#include <zelmediatypes/AudioChannelLayout.h>

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

TEST(AudioChannelLayoutTest, UsualCountsHaveTheirLayout) {
    for (const Known& known : kKnown) {
        const AudioChannelLayout layout = MakeChannelLayoutForCount(known.count);
        EXPECT_EQ(layout.size(), known.count);
        EXPECT_EQ(layout, MakeChannelLayoutForName(known.name)) << known.name;
        EXPECT_EQ(GetChannelLayoutDisplayName(layout), AsciiToUTF16(known.displayName)) << known.name;
        for (std::size_t i = 0; i < known.count; ++i) {
            EXPECT_NE(layout[i].label, kChannelDiscrete) << known.name;
            EXPECT_EQ(FindChannel(layout, layout[i].label), static_cast<int>(i)) << known.name << ": a label twice";
        }
    }
}

TEST(AudioChannelLayoutTest, SurroundChannelsComeInTheirOrder) {
    EXPECT_EQ(MakeChannelLayoutForName("5.1"),
              MakeChannelLayout({kChannelLeft, kChannelRight, kChannelCenter, kChannelLFE, kChannelLeftSurround,
                                 kChannelRightSurround}));
    EXPECT_EQ(MakeChannelLayoutForName("7.1.4"),
              MakeChannelLayout({kChannelLeft, kChannelRight, kChannelCenter, kChannelLFE, kChannelLeftSurround,
                                 kChannelRightSurround, kChannelLeftRear, kChannelRightRear, kChannelLeftTopFront,
                                 kChannelRightTopFront, kChannelLeftTopRear, kChannelRightTopRear}));
}

TEST(AudioChannelLayoutTest, OtherCountsAreDiscrete) {
    for (const std::size_t count : {9u, 11u, 13u, 16u, 100u}) {
        const AudioChannelLayout layout = MakeChannelLayoutForCount(count);
        EXPECT_EQ(layout.size(), count);
        EXPECT_EQ(layout[0].label, kChannelDiscrete);
        EXPECT_EQ(FindChannel(layout, kChannelLeft), -1);
        EXPECT_EQ(GetChannelLayoutDisplayName(layout), AsciiToUTF16(std::to_string(count) + " channels"));
    }
}

TEST(AudioChannelLayoutTest, NoChannels) {
    EXPECT_EQ(AudioChannelLayout().size(), 0u);
    EXPECT_EQ(MakeChannelLayoutForCount(0), AudioChannelLayout());
    EXPECT_EQ(GetChannelLayoutDisplayName(AudioChannelLayout()), AsciiToUTF16("0 channels"));
}

TEST(AudioChannelLayoutTest, NumbersNameDiscreteChannels) {
    EXPECT_EQ(MakeChannelLayoutForName("16"), AudioChannelLayout(16));
    EXPECT_EQ(MakeChannelLayoutForName("64").size(), 64u);
    EXPECT_EQ(MakeChannelLayoutForName("2"), MakeChannelLayout({kChannelDiscrete, kChannelDiscrete}));
    EXPECT_EQ(GetChannelLayoutDisplayName(MakeChannelLayoutForName("1")), AsciiToUTF16("1 channel"));
}

TEST(AudioChannelLayoutTest, AnythingElseNamesNoChannels) {
    for (const char* const name :
         {"", "0", "65", "99999999999999999999999", "-2", "+2", " 2", "2 ", "2x", "Stereo", "5.1.0", "stereo2", "0x10"})
        EXPECT_EQ(MakeChannelLayoutForName(name), AudioChannelLayout()) << name;
}

TEST(AudioChannelLayoutTest, EveryNameIsOfferedAndKnown) {
    std::vector<std::string_view> names;
    for (const Known& known : kKnown) names.push_back(known.name);
    EXPECT_EQ(GetChannelLayoutNames(), names);
}

TEST(AudioChannelLayoutTest, LabelsInAnUnusualOrderHaveNoLayoutName) {
    EXPECT_EQ(GetChannelLayoutDisplayName(MakeChannelLayout({kChannelRight, kChannelLeft})),
              AsciiToUTF16("2 channels"));
}

TEST(AudioChannelLayoutTest, FirstOfEqualLabelsIsFound) {
    EXPECT_EQ(FindChannel(MakeChannelLayout({kChannelDiscrete, kChannelLeft, kChannelLeft}), kChannelLeft), 1);
}
