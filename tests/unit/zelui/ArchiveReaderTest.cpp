#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include <zelui/ArchiveError.h>

#include "../../../frameworks/zelui/src/ArchiveReader.h"
#include "ArchiveTools.h"

namespace zeltests {

using testing::HasSubstr;
using zelui::ArchiveList;
using zelui::ReadPropertyMap;

namespace {

std::string ErrorOf(const std::string& archive) {
    try {
        ReadPropertyMap(archive);
    } catch (const zelui::ui::ArchiveError& error) {
        return error.what();
    }
    return "no error";
}

std::string ErrorOfPair(const std::string& value) { return ErrorOf(Map(Pair("a", value))); }

}  // namespace

TEST(ArchiveReaderTest, EachKindOfValueIsRead) {
    const ArchiveList list =
        ReadPropertyMap(Map(Pair("signed", Signed(-2147483648)) + Pair("unsigned", Unsigned(4294967295)) +
                            Pair("float", Float(" -1.5e2 ")) + Pair("yes", "<true/>") + Pair("no", "<false></false>") +
                            Pair("text", "<string>a &lt;b&gt; &#x41;</string>") +
                            Pair("utext", Text("Gr\xC3\xB6\xC3\x9F"
                                               "e")) +
                            Pair("list", List(Pair("inner", Signed(7))))));
    EXPECT_EQ(list.GetInteger("signed"), -2147483648);
    EXPECT_EQ(list.GetInteger("unsigned"), 4294967295);
    EXPECT_EQ(list.GetNumber("float"), -150.0f);
    EXPECT_TRUE(list.GetBoolean("yes"));
    EXPECT_FALSE(list.GetBoolean("no"));
    EXPECT_EQ(list.GetText("text"), "a <b> A");
    EXPECT_EQ(list.GetText("utext"),
              "Gr\xC3\xB6\xC3\x9F"
              "e");
    EXPECT_EQ(list.GetList("list").GetInteger("inner"), 7);
}

TEST(ArchiveReaderTest, PairsKeepTheirOrder) {
    const ArchiveList list = ReadPropertyMap(Map(Pair("z", Signed(1)) + Pair("a", Signed(2)) + Pair("m", Signed(3))));
    ASSERT_EQ(list.GetPairs().size(), 3u);
    EXPECT_EQ(list.GetPairs()[0].key, "z");
    EXPECT_EQ(list.GetPairs()[2].key, "m");
}

TEST(ArchiveReaderTest, BlanksAndCommentsCountForNothing) {
    const ArchiveList list = ReadPropertyMap(
        "<!-- a --><prop.map version=\"4\"> <!-- b --> <prop.list>\n\n<prop.pair> <key>a</key> <!-- c --><true/> "
        "</prop.pair></prop.list></prop.map>\n<!-- d -->\n");
    EXPECT_TRUE(list.GetBoolean("a"));
}

TEST(ArchiveReaderTest, WhatIsMissingOrOfAnotherKindIsAnErrorWithItsLine) {
    const ArchiveList list = ReadPropertyMap(Map("\n" + Pair("a", Signed(1))));
    EXPECT_THROW(list.GetInteger("b"), zelui::ui::ArchiveError);
    EXPECT_THROW(list.GetNumber("a"), zelui::ui::ArchiveError);
    EXPECT_THROW(list.GetBoolean("a"), zelui::ui::ArchiveError);
    EXPECT_THROW(list.GetText("a"), zelui::ui::ArchiveError);
    try {
        list.GetList("a");
        FAIL() << "a number was taken for a list";
    } catch (const zelui::ui::ArchiveError& error) {
        EXPECT_STREQ(error.what(), "line 4: \"a\" is not a list");
    }
}

TEST(ArchiveReaderTest, ARecordOfAnotherKindIsAnError) {
    const ArchiveList list = ReadPropertyMap(Map(Pair("a", List(Pair(".aptype", Signed(2))))));
    EXPECT_EQ(list.GetRecord("a", 2).GetPairs().size(), 1u);
    EXPECT_THROW(list.GetRecord("a", 1), zelui::ui::ArchiveError);
    const ArchiveList none = ReadPropertyMap(Map(Pair("a", List(""))));
    EXPECT_THROW(none.GetRecord("a", 1), zelui::ui::ArchiveError);
}

TEST(ArchiveReaderTest, AnotherVersionIsAnError) {
    EXPECT_THAT(ErrorOf("<prop.map version=\"5\"><prop.list/></prop.map>"), HasSubstr("version"));
    EXPECT_THAT(ErrorOf("<prop.map version=\"04\"><prop.list/></prop.map>"), HasSubstr("version"));
    EXPECT_THAT(ErrorOf("<prop.map><prop.list/></prop.map>"), HasSubstr("version"));
    EXPECT_EQ(ErrorOf("<prop.map version=\"4\"><prop.list/></prop.map>"), "no error");
}

TEST(ArchiveReaderTest, WhatIsNoPropertyMapIsAnError) {
    EXPECT_NE(ErrorOf(""), "no error");
    EXPECT_NE(ErrorOf("   "), "no error");
    EXPECT_NE(ErrorOf("prop.map"), "no error");
    EXPECT_NE(ErrorOf(std::string(100, '\0')), "no error");
    EXPECT_THAT(ErrorOf("<svg version=\"4\"><prop.list/></svg>"), HasSubstr("<prop.map> is missing"));
    EXPECT_THAT(ErrorOf("<prop.map version=\"4\"/>"), HasSubstr("<prop.list> is missing"));
    EXPECT_THAT(ErrorOf("<prop.map version=\"4\"><prop.list/><prop.list/></prop.map>"), HasSubstr("too many"));
    EXPECT_THAT(ErrorOf("<prop.map version=\"4\"><prop.list>text</prop.list></prop.map>"), HasSubstr("text outside"));
}

TEST(ArchiveReaderTest, APairIsAKeyAndOneValue) {
    const auto inList = [](const std::string& text) { return ErrorOf(Map(text)); };
    EXPECT_THAT(inList("<key>a</key>"), HasSubstr("something else than a pair"));
    EXPECT_THAT(inList("<prop.pair><true/></prop.pair>"), HasSubstr("<key> is missing"));
    EXPECT_THAT(inList("<prop.pair><key>a</key></prop.pair>"), HasSubstr("\"a\" has no value"));
    EXPECT_THAT(inList("<prop.pair><key></key><true/></prop.pair>"), HasSubstr("a key is empty"));
    EXPECT_THAT(inList("<prop.pair><key>a</key><true/><true/></prop.pair>"), HasSubstr("too many"));
    EXPECT_THAT(inList("<prop.pair><key>a<b/></key><true/></prop.pair>"), HasSubstr("an element in a value"));
    EXPECT_THAT(inList(Pair("a", "<true/>") + Pair("a", "<false/>")), HasSubstr("\"a\" is there twice"));
}

TEST(ArchiveReaderTest, AnUnknownKindOfValueIsAnError) {
    EXPECT_THAT(ErrorOfPair("<double>1</double>"), HasSubstr("<double> is no kind of value"));
    EXPECT_THAT(ErrorOfPair("<prop.map version=\"4\"/>"), HasSubstr("no kind of value"));
}

TEST(ArchiveReaderTest, NumbersThatAreNoneAreErrors) {
    for (const char* number : {"", "x", "1,5", "nan", "inf", "-inf", "1e999", "0x10", "1 2", "<b/>"})
        EXPECT_NE(ErrorOfPair(Float(number)), "no error") << number;
    EXPECT_EQ(ErrorOfPair(Float("1e300")), "no error");
    EXPECT_THROW(ReadPropertyMap(Map(Pair("a", Float("1e300")))).GetNumber("a"), zelui::ui::ArchiveError);
}

TEST(ArchiveReaderTest, WholeNumbersThatAreNoneOrDoNotFitAreErrors) {
    const auto errorOf = [](const char* type, const char* size, const char* number) {
        return ErrorOfPair(std::string("<int type=\"") + type + "\" size=\"" + size + "\">" + number + "</int>");
    };
    for (const char* number : {"", "x", "1.0", "2147483648", "-2147483649", "99999999999999999999", "0x1"})
        EXPECT_NE(errorOf("signed", "32", number), "no error") << number;
    for (const char* number : {"-1", "4294967296"}) EXPECT_NE(errorOf("unsigned", "32", number), "no error") << number;
    EXPECT_NE(errorOf("long", "32", "1"), "no error");
    EXPECT_NE(errorOf("signed", "64", "1"), "no error");
    EXPECT_NE(ErrorOfPair("<int>1</int>"), "no error");
}

TEST(ArchiveReaderTest, DocumentTypesAndEntitiesAreErrors) {
    EXPECT_NE(ErrorOf("<!DOCTYPE prop.map><prop.map version=\"4\"><prop.list/></prop.map>"), "no error");
    EXPECT_NE(ErrorOf("<!DOCTYPE a [<!ENTITY b \"cccc\">]>" + Map(Pair("a", Text("&b;")))), "no error");
    EXPECT_NE(ErrorOf(Map(Pair("a", Text("&b;")))), "no error");
}

TEST(ArchiveReaderTest, TextThatIsNotInUtf8IsAnError) {
    EXPECT_NE(ErrorOf(Map(Pair("a", Text("\xFF\xFE")))), "no error");
    EXPECT_THAT(
        ErrorOf("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><prop.map version=\"4\"><prop.list/></prop.map>"),
        HasSubstr("UTF-8"));
}

TEST(ArchiveReaderTest, WhatIsLargerThanAnyArchiveIsAnError) {
    EXPECT_THAT(ErrorOf(std::string(zelui::kLargestArchive + 1, ' ')), HasSubstr("mebibyte"));
    EXPECT_THAT(ErrorOfPair(Text(std::string(zelui::kMaxArchiveText + 1, 'x'))), HasSubstr("too long"));
    EXPECT_EQ(ErrorOfPair(Text(std::string(zelui::kMaxArchiveText, 'x'))), "no error");
    EXPECT_THAT(ErrorOf(Map(Pair(std::string(zelui::kMaxArchiveKey + 1, 'k'), "<true/>"))), HasSubstr("too long"));
}

TEST(ArchiveReaderTest, ListsThatAreTooDeepOrTooLongAreErrors) {
    std::string open;
    std::string close;
    for (int i = 0; i < 20000; ++i) {
        open += "<prop.list><prop.pair><key>a</key>";
        if (i < 100) close += "</prop.pair></prop.list>";
    }
    EXPECT_THAT(ErrorOfPair(open + close), HasSubstr("too deep"));
    std::string pairs;
    for (std::size_t i = 0; i <= zelui::kMaxArchiveListLength; ++i) pairs += Pair(std::to_string(i), "<true/>");
    EXPECT_THAT(ErrorOf(Map(pairs)), HasSubstr("a list is too long"));
}

}  // namespace zeltests
