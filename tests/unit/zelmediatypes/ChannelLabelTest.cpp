#include <set>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>
#include <zelmediatypes/ChannelLabel.h>

using namespace zelmediatypes;
using zelcore::utility::AsciiToUTF16;

TEST(ChannelLabelTest, StoredNumbersNeverChange) {
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
}

TEST(ChannelLabelTest, EveryLabelHasANameAndASignOfItsOwn) {
    std::set<zelcore::ustring> names;
    std::set<zelcore::ustring> signs;
    for (int label = kChannelMono; label <= kChannelRightTopRear; ++label) {
        names.insert(GetChannelLabelName(static_cast<ChannelLabel>(label)));
        signs.insert(GetChannelLabelAbbreviation(static_cast<ChannelLabel>(label)));
    }
    EXPECT_EQ(names.size(), 14u);
    EXPECT_EQ(signs.size(), 14u);
    EXPECT_EQ(names.count(zelcore::ustring()), 0u);
    EXPECT_EQ(signs.count(zelcore::ustring()), 0u);
}

TEST(ChannelLabelTest, NamesAndSignsReadAsPeopleWriteThem) {
    EXPECT_EQ(GetChannelLabelName(kChannelLeft), AsciiToUTF16("Left"));
    EXPECT_EQ(GetChannelLabelName(kChannelLFE), AsciiToUTF16("LFE"));
    EXPECT_EQ(GetChannelLabelName(kChannelRightTopRear), AsciiToUTF16("Right Top Rear"));
    EXPECT_EQ(GetChannelLabelAbbreviation(kChannelLeft), AsciiToUTF16("L"));
    EXPECT_EQ(GetChannelLabelAbbreviation(kChannelLFE), AsciiToUTF16("Lfe"));
    EXPECT_EQ(GetChannelLabelAbbreviation(kChannelLeftTopFront), AsciiToUTF16("Ltf"));
}

TEST(ChannelLabelTest, DiscreteAndUnknownLabelsHaveNeither) {
    const ChannelLabel unknown = static_cast<ChannelLabel>(15);
    EXPECT_TRUE(GetChannelLabelName(kChannelDiscrete).empty());
    EXPECT_TRUE(GetChannelLabelAbbreviation(kChannelDiscrete).empty());
    EXPECT_TRUE(GetChannelLabelName(unknown).empty());
    EXPECT_TRUE(GetChannelLabelAbbreviation(unknown).empty());
}

TEST(ChannelLabelTest, NamesFollowTheDictionaryAndSignsDoNot) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("de.json"), R"({"/zelmediatypes/ChannelLabel/Left": "Links"})");
    zelcore::config::Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(folder.UPath("de.json")));
    EXPECT_EQ(GetChannelLabelName(kChannelLeft), AsciiToUTF16("Links"));
    EXPECT_EQ(GetChannelLabelName(kChannelRight), AsciiToUTF16("Right"));
    EXPECT_EQ(GetChannelLabelAbbreviation(kChannelLeft), AsciiToUTF16("L"));
    zelcore::config::Localizer::GetInstance().Clear();
}
