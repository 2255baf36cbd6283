#include <random>
#include <set>

#include <zelaudiofilterhost/PluginLocator.h>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::Narrow;
using zeltests::U;

ustring RandomText(std::mt19937& random, std::size_t maxLength, std::size_t minLength) {
    // Few code units, so that the special ones come often and in every order.
    static const ustring::value_type kUnits[] = {'\\', '|', '\n', '\r',   0,      'n',   'r',
                                                 '0',  '/', 'a',  0xD800, 0xDC00, 0xFFFE};
    ustring text;
    const std::size_t length = minLength + random() % (maxLength - minLength + 1);
    for (std::size_t i = 0; i < length; ++i) {
        const bool isAny = random() % 4 == 0;
        text.push_back(isAny ? static_cast<ustring::value_type>(random()) : kUnits[random() % std::size(kUnits)]);
    }
    return text;
}

TEST(PluginLocatorTest, TheTextFormIsTechnologySubcomponentAndPath) {
    EXPECT_EQ(Narrow(PluginLocator(kTechnologyVST3, U("/usr/lib/vst3/Echo.vst3")).ToString()),
              "3||/usr/lib/vst3/Echo.vst3");
    EXPECT_EQ(Narrow(PluginLocator(kTechnologyVST, U("/x/Shell.so"), U("Delay")).ToString()), "2|Delay|/x/Shell.so");
}

TEST(PluginLocatorTest, SpecialCharactersAreWrittenAsBackslashSequencesOnOneLine) {
    const PluginLocator locator(kTechnologyVST, U("C:\\a|b\nc\rd") + ustring(1, 0), U("x|y"));
    EXPECT_EQ(Narrow(locator.ToString()), "2|x\\|y|C:\\\\a\\|b\\nc\\rd\\0");
    EXPECT_EQ(PluginLocator::FromString(locator.ToString()), locator);
}

TEST(PluginLocatorTest, TheEmptyLocatorIsAnEmptyTextAndBack) {
    EXPECT_TRUE(PluginLocator().ToString().empty());
    EXPECT_EQ(PluginLocator::FromString(ustring()), PluginLocator());
    EXPECT_EQ(PluginLocator().GetTechnologyType(), kTechnologyNone);
    EXPECT_TRUE(PluginLocator().GetPath().empty());
}

TEST(PluginLocatorTest, EveryLocatorWithATechnologyAndAPathComesBackFromItsText) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto technology = static_cast<TechnologyType>(1 + random() % 4);
        const PluginLocator locator(technology, RandomText(random, 12, 1), RandomText(random, 6, 0));
        ASSERT_EQ(PluginLocator::FromString(locator.ToString()), locator) << Narrow(locator.ToString());
    }
}

TEST(PluginLocatorTest, DifferentLocatorsHaveDifferentTexts) {
    std::mt19937 random(2);
    std::set<PluginLocator> locators;
    std::set<ustring> texts;
    for (int i = 0; i < 5000; ++i) {
        const PluginLocator locator(kTechnologyVST, RandomText(random, 3, 1), RandomText(random, 2, 0));
        locators.insert(locator);
        texts.insert(locator.ToString());
    }
    EXPECT_EQ(locators.size(), texts.size());
}

TEST(PluginLocatorTest, ATextThatIsNoLocatorGivesTheEmptyOne) {
    for (const char* text :
         {"2",      "2|",     "2||",     "2|a|", "0||/x", "5||/x",   "9||/x",    "-1||/x",   "22||/x",  "x||/x",
          " 2||/x", "2||/x|", "2||/x|y", "2|/x", "||/x",  "2||/x\\", "2||/x\\q", "2|a\\|/x", "2||/x\n", "2||\r/x"}) {
        EXPECT_EQ(PluginLocator::FromString(U(text)), PluginLocator()) << text;
    }
    EXPECT_EQ(PluginLocator::FromString(U("2||/x") + ustring(1, 0)), PluginLocator());
}

TEST(PluginLocatorTest, RandomTextNeverThrowsAndWhatIsReadIsWrittenTheSameWay) {
    std::mt19937 random(3);
    int readable = 0;
    for (int i = 0; i < 50000; ++i) {
        ustring text = RandomText(random, 10, 0);
        if (i % 2 == 0) text = U("2|") + text;
        const PluginLocator locator = PluginLocator::FromString(text);
        if (locator == PluginLocator()) continue;
        ++readable;
        ASSERT_EQ(locator.ToString(), text);
    }
    EXPECT_GT(readable, 100);
}

TEST(PluginLocatorTest, ATextAtTheLimitIsReadAndALongerOneIsNot) {
    const ustring longest = U("2||") + ustring(PluginLocator::kMaxTextLength - 3, 'a');
    EXPECT_EQ(PluginLocator::FromString(longest).GetPath().size(), PluginLocator::kMaxTextLength - 3);
    EXPECT_EQ(PluginLocator::FromString(longest + U("a")), PluginLocator());
}

TEST(PluginLocatorTest, LocatorsAreEqualOnlyIfAllPartsAre) {
    const PluginLocator locator(kTechnologyVST, U("/x"), U("s"));
    EXPECT_EQ(locator, PluginLocator(kTechnologyVST, U("/x"), U("s")));
    EXPECT_NE(locator, PluginLocator(kTechnologyVST3, U("/x"), U("s")));
    EXPECT_NE(locator, PluginLocator(kTechnologyVST, U("/y"), U("s")));
    EXPECT_NE(locator, PluginLocator(kTechnologyVST, U("/x"), U("")));
}

}  // namespace
