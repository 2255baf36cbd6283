#include <string>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/FileError.h>
#include <zelcore/Localizer.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

using zelcore::config::Localize;
using zelcore::config::Localizer;
using zelcore::filesupport::File;
using zelcore::serialization::SerializationError;
using zelcore::utility::UTF8to16;

namespace {

class LocalizerTest : public ::testing::Test {
protected:
    ~LocalizerTest() override { Localizer::GetInstance().Clear(); }

    void Load(const std::string& json) {
        zeltests::WriteFile(mFolder.Path("texts.json"), json);
        Localizer::GetInstance().LoadDictionary(File(mFolder.UPath("texts.json")));
    }

    zeltests::ThrowAwayFolder mFolder;
};

}  // namespace

TEST_F(LocalizerTest, DefaultStandsInForAMissingKey) {
    EXPECT_EQ(Localize("$$$/a/b=Cancel"), UTF8to16("Cancel"));
    EXPECT_EQ(Localize("$$$/a/b=x=y"), UTF8to16("x=y"));
    EXPECT_EQ(Localize("$$$/a/b="), UTF8to16(""));
    EXPECT_EQ(Localize("$$$/a/b=\xC3\x9C"), UTF8to16("\xC3\x9C"));
}

TEST_F(LocalizerTest, TextOfAnotherFormStaysAsItIs) {
    for (const char* const text : {"", "Cancel", "$$$/no/default", "$$$a=b", "$$/a=b", "x$$$/a=b", "a=b"})
        EXPECT_EQ(Localize(text), UTF8to16(text)) << text;
}

TEST_F(LocalizerTest, DictionaryTextWins) {
    Load(R"({"/a/b": "Abbrechen \u00fc", "/empty": ""})");
    EXPECT_EQ(Localize("$$$/a/b=Cancel"), UTF8to16("Abbrechen \xC3\xBC"));
    EXPECT_EQ(Localize("$$$/empty=Cancel"), UTF8to16(""));
    EXPECT_EQ(Localize("$$$/a=Cancel"), UTF8to16("Cancel"));
    Localizer::GetInstance().Clear();
    EXPECT_EQ(Localize("$$$/a/b=Cancel"), UTF8to16("Cancel"));
}

TEST_F(LocalizerTest, NextDictionaryReplacesTheWholeOneBefore) {
    Load(R"({"/a": "1", "/b": "2"})");
    Load(R"({"/b": "3"})");
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("default"));
    EXPECT_EQ(Localize("$$$/b=default"), UTF8to16("3"));
}

TEST_F(LocalizerTest, BadDictionaryLeavesTheOneInUse) {
    Load(R"({"/a": "kept"})");
    for (const char* const bad :
         {"", "[]", "null", R"({"/a": 1})", R"({"/a": null})", R"({"/a": {"b": "c"}})", R"({"/a": "x")"})
        EXPECT_THROW(Load(bad), SerializationError) << bad;
    EXPECT_THROW(Localizer::GetInstance().LoadDictionary(File(mFolder.UPath("missing"))),
                 zelcore::filesupport::FileError);
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("kept"));
}

TEST_F(LocalizerTest, DictionaryBeyondFourMebibytesIsRefused) {
    const std::string start = R"({"/a": "x"})";
    Load(start + std::string((4u << 20) - start.size(), ' '));
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("x"));
    EXPECT_THROW(Load(start + std::string((4u << 20) - start.size() + 1, ' ')), SerializationError);
}

TEST_F(LocalizerTest, ClientNameIsTheHosts) {
    EXPECT_EQ(zelcore::config::GetClientName(), UTF8to16("Tessaly"));
    zelcore::config::SetClientName(UTF8to16("Other"));
    EXPECT_EQ(zelcore::config::GetClientName(), UTF8to16("Other"));
    zelcore::config::SetClientName(UTF8to16("Tessaly"));
}
