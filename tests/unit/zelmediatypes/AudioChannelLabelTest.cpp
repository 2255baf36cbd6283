#include <set>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>
#include <zelmediatypes/AudioChannelLabel.h>

using namespace zelmediatypes;
using zelcore::utility::AsciiToUTF16;

TEST(AudioChannelLabelTest, StoredNumbersNeverChange) {
    EXPECT_EQ(kChannelDiscrete, 0);
    EXPECT_EQ(kChannelMono, 1);
    EXPECT_EQ(kChannelLeft, 2);
    EXPECT_EQ(kChannelRight, 3);
    EXPECT_EQ(kChannelCenter, 4);
    EXPECT_EQ(kChannelLFE, 5);
    EXPECT_EQ(kChannelLeftSurround, 6);
    EXPECT_EQ(kChannelRightSurround, 7);
    EXPECT_EQ(kChannelCenterSurround, 8);
    EXPECT_EQ(kChannelLeftRear, 9);
    EXPECT_EQ(kChannelRightRear, 10);
    EXPECT_EQ(kChannelLeftTopFront, 11);
    EXPECT_EQ(kChannelRightTopFront, 12);
    EXPECT_EQ(kChannelLeftTopRear, 13);
    EXPECT_EQ(kChannelRightTopRear, 14);
    EXPECT_EQ(kChannelLeftCenter, 15);
    EXPECT_EQ(kChannelRightCenter, 16);
    EXPECT_EQ(kChannelTopCenter, 17);
    EXPECT_EQ(kChannelLeftTopMiddle, 18);
    EXPECT_EQ(kChannelRightTopMiddle, 19);
    EXPECT_EQ(kChannelCenterTopFront, 20);
    EXPECT_EQ(kChannelCenterTopRear, 21);
    EXPECT_EQ(kChannelLFE2, 22);
}

TEST(AudioChannelLabelTest, EveryLabelHasANameAndASignOfItsOwn) {
    std::set<zelcore::ustring> names;
    std::set<zelcore::ustring> signs;
    for (int label = kChannelMono; label <= kChannelLFE2; ++label) {
        names.insert(AudioChannelLabelDescription(static_cast<AudioChannelLabel>(label), false));
        signs.insert(AudioChannelLabelDescription(static_cast<AudioChannelLabel>(label), true));
    }
    EXPECT_EQ(names.size(), 22u);
    EXPECT_EQ(signs.size(), 22u);
    EXPECT_EQ(names.count(zelcore::ustring()), 0u);
    EXPECT_EQ(signs.count(zelcore::ustring()), 0u);
}

TEST(AudioChannelLabelTest, NamesAndSignsReadAsPeopleWriteThem) {
    EXPECT_EQ(AudioChannelLabelDescription(kChannelLeft, false), AsciiToUTF16("Left"));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelLFE, false), AsciiToUTF16("LFE"));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelRightTopRear, false), AsciiToUTF16("Right Top Rear"));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelLeft, true), AsciiToUTF16("L"));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelLFE, true), AsciiToUTF16("Lfe"));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelLeftTopFront, true), AsciiToUTF16("Ltf"));
}

TEST(AudioChannelLabelTest, DiscreteAndUnknownLabelsHaveNeither) {
    const AudioChannelLabel unknown = static_cast<AudioChannelLabel>(23);
    EXPECT_TRUE(AudioChannelLabelDescription(kChannelDiscrete, false).empty());
    EXPECT_TRUE(AudioChannelLabelDescription(kChannelDiscrete, true).empty());
    EXPECT_TRUE(AudioChannelLabelDescription(unknown, false).empty());
    EXPECT_TRUE(AudioChannelLabelDescription(unknown, true).empty());
}

TEST(AudioChannelLabelTest, NamesFollowTheDictionaryAndSignsDoNot) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("de.json"), R"({"/zelmediatypes/ChannelLabel/Left": "Links"})");
    zelcore::config::Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(folder.UPath("de.json")));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelLeft, false), AsciiToUTF16("Links"));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelRight, false), AsciiToUTF16("Right"));
    EXPECT_EQ(AudioChannelLabelDescription(kChannelLeft, true), AsciiToUTF16("L"));
    zelcore::config::Localizer::GetInstance().Clear();
}
