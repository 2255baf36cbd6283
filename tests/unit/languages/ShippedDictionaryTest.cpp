#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Dir.h>
#include <zelcore/File.h>
#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

using zelcore::ustring;
using zelcore::config::Localize;
using zelcore::config::Localizer;
using zelcore::filesupport::Dir;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace {

const char* const kNoText = "no text";

/// The dictionaries as the build has them beside the programs, in one language after the other.
class ShippedDictionaryTest : public ::testing::TestWithParam<const char*> {
protected:
    ~ShippedDictionaryTest() override { Localizer::GetInstance().Clear(); }

    static bool Add(const std::string& part) {
        const Dir folder(UTF8to16(std::string(ZEL_SHARE_DIR) + "/" + part + "/locale"));
        return Localizer::GetInstance().AddLanguage(folder, {UTF8to16(GetParam())});
    }

    static zelcore::utf8string GetText(const std::string& key) {
        return UTF16to8(Localize("$$$" + key + "=" + kNoText));
    }
};

/// The keys of an archive's "($$$/key=Default)".
std::set<std::string> ReadKeys(const std::string& archive) {
    std::set<std::string> keys;
    const std::string start = "($$$";
    for (std::size_t at = archive.find(start); at != std::string::npos; at = archive.find(start, at + 1)) {
        const std::size_t begin = at + start.size();
        keys.insert(archive.substr(begin, archive.find('=', begin) - begin));
    }
    return keys;
}

}  // namespace

TEST_P(ShippedDictionaryTest, HasEveryTextOfTheManagersArchive) {
    ASSERT_TRUE(Add("zelaudiofilterhostui"));
    const std::set<std::string> keys = ReadKeys(zeltests::ReadFile(ZEL_RESOURCES_DIR "/AudioPluginManager.xml"));
    EXPECT_EQ(keys.size(), 13u);
    for (const std::string& key : keys) {
        EXPECT_NE(GetText(key), kNoText) << key;
        EXPECT_NE(GetText(key), "") << key;
    }
}

TEST_P(ShippedDictionaryTest, ProgramsTextsComeBesideTheLibrarys) {
    ASSERT_TRUE(Add("zelaudiofilterhostui"));
    ASSERT_TRUE(Add("tessaly"));
    EXPECT_NE(GetText("/zelui/Cancel"), kNoText);
    EXPECT_NE(GetText("/tessaly/NoParameters"), kNoText);
}

TEST_P(ShippedDictionaryTest, TextsAreFilledInLikeTheDefaults) {
    ASSERT_TRUE(Add("zelaudiofilterhostui"));
    const ustring filled = zelcore::utility::FillPlaceholders(Localize("$$$/zelui/ProgressNumbers=@0 of @1"),
                                                              {UTF8to16("3"), UTF8to16("8")});
    EXPECT_EQ(UTF16to8(filled).find('@'), std::string::npos);
    EXPECT_LT(UTF16to8(filled).find('3'), UTF16to8(filled).find('8'));
}

INSTANTIATE_TEST_SUITE_P(Languages, ShippedDictionaryTest, ::testing::Values("de", "fr", "ja"),
                         [](const auto& language) { return std::string(language.param); });
