#include "ChannelMapText.h"

#include <gtest/gtest.h>

#include "UsageError.h"

namespace zeltests {

using tessaly::ChannelMapText;
using zelaudiofilterhost::ChannelMap;
using zelaudiofilterhost::kNotConnected;

TEST(ChannelMapTextTest, ChannelsOfTheTrackAreCountedFromOneAndMayOccurTwice) {
    EXPECT_EQ(ChannelMapText::Parse("2,1,-,1"), (ChannelMap{{0, 1}, {1, 0}, {2, kNotConnected}, {3, 0}}));
    EXPECT_EQ(ChannelMapText::Parse("-"), (ChannelMap{{0, kNotConnected}}));
    EXPECT_EQ(ChannelMapText::Parse("256"), (ChannelMap{{0, 255}}));
}

TEST(ChannelMapTextTest, WhatWasPrintedIsReadBack) {
    for (const char* const text : {"2,1,-,1", "-", "7"})
        EXPECT_EQ(ChannelMapText::Print(ChannelMapText::Parse(text)), text);
    EXPECT_EQ(ChannelMapText::Print({}), "none");
}

TEST(ChannelMapTextTest, WhatIsNoListIsRefused) {
    for (const char* const text :
         {"", ",", "1,", ",1", "1;2", "0", "-1", "+1", " 1", "1 ", "257", "99999999999999", "x"})
        EXPECT_THROW(ChannelMapText::Parse(text), tessaly::UsageError) << text;
}

TEST(ChannelMapTextTest, AListOfMoreChannelsThanAnEffectCanHaveIsRefused) {
    std::string list = "1";
    for (int i = 1; i < 1024; ++i) list += ",1";
    EXPECT_EQ(ChannelMapText::Parse(list).size(), 1024u);
    EXPECT_THROW(ChannelMapText::Parse(list + ",1"), tessaly::UsageError);
}

}  // namespace zeltests
