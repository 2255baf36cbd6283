#include <gtest/gtest.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

using zelcore::ustring;
using zelcore::utility::AsciiToUTF16;
using zelcore::utility::ReplaceInString;

namespace {

int Replace(const char* text, const char* token, const char* replacement, ustring& result) {
    result = AsciiToUTF16(text);
    return ReplaceInString(result, AsciiToUTF16(token), AsciiToUTF16(replacement));
}

}  // namespace

TEST(StringUtilsTest, ReplacesEveryOccurrence) {
    ustring result;
    EXPECT_EQ(Replace("@0 of @0, @1", "@0", "three", result), 2);
    EXPECT_EQ(result, AsciiToUTF16("three of three, @1"));
}

TEST(StringUtilsTest, ReplacementThatHoldsTheTokenIsNotExpandedAgain) {
    ustring result;
    EXPECT_EQ(Replace("<@0>", "@0", "@0@0", result), 1);
    EXPECT_EQ(result, AsciiToUTF16("<@0@0>"));
}

TEST(StringUtilsTest, ReplacementAndItsSurroundingsNeverFormANewToken) {
    ustring result;
    EXPECT_EQ(Replace("aab", "ab", "b", result), 1);
    EXPECT_EQ(result, AsciiToUTF16("ab"));
}

TEST(StringUtilsTest, OverlappingOccurrencesCountFromTheLeft) {
    ustring result;
    EXPECT_EQ(Replace("aaaaa", "aa", "x", result), 2);
    EXPECT_EQ(result, AsciiToUTF16("xxa"));
}

TEST(StringUtilsTest, EmptyTokenReplacesNothing) {
    ustring result;
    EXPECT_EQ(Replace("abc", "", "x", result), 0);
    EXPECT_EQ(result, AsciiToUTF16("abc"));
}

TEST(StringUtilsTest, EmptyReplacementRemoves) {
    ustring result;
    EXPECT_EQ(Replace("a-b-", "-", "", result), 2);
    EXPECT_EQ(result, AsciiToUTF16("ab"));
}

TEST(StringUtilsTest, ArgumentsMayBeTheTextItself) {
    ustring text = AsciiToUTF16("abc");
    EXPECT_EQ(ReplaceInString(text, text, text), 1);
    EXPECT_EQ(text, AsciiToUTF16("abc"));
}

TEST(StringUtilsTest, PlaceholdersAreFilledWhereverTheyStand) {
    const ustring one = AsciiToUTF16("one");
    const ustring two = AsciiToUTF16("two");
    EXPECT_EQ(FillPlaceholders(AsciiToUTF16("@1 (@0), @1"), {one, two}), AsciiToUTF16("two (one), two"));
    EXPECT_EQ(FillPlaceholders(AsciiToUTF16("@0"), {one}), one);
    EXPECT_EQ(FillPlaceholders(ustring(), {one}), ustring());
}

TEST(StringUtilsTest, AValueThatReadsLikeAPlaceholderStaysWhatItIs) {
    const ustring one = AsciiToUTF16("@1@0");
    const ustring two = AsciiToUTF16("two");
    EXPECT_EQ(FillPlaceholders(AsciiToUTF16("@0 @1"), {one, two}), AsciiToUTF16("@1@0 two"));
}

TEST(StringUtilsTest, APlaceholderWithoutAValueStays) {
    EXPECT_EQ(FillPlaceholders(AsciiToUTF16("@ @0 @1 @: @@0 @"), {AsciiToUTF16("x")}), AsciiToUTF16("@ x @1 @: @x @"));
}
