#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/FileError.h>
#include <zelcore/Localizer.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

using zelcore::config::Localize;
using zelcore::config::Localizer;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::serialization::SerializationError;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace {

class LocalizerTest : public ::testing::Test {
protected:
    ~LocalizerTest() override { Localizer::GetInstance().Clear(); }

    void Load(const std::string& json) {
        zeltests::WriteFile(mFolder.Path("texts.json"), json);
        Localizer::GetInstance().LoadDictionary(File(mFolder.UPath("texts.json")));
    }

    void Add(const std::string& json) {
        zeltests::WriteFile(mFolder.Path("more.json"), json);
        Localizer::GetInstance().AddDictionary(File(mFolder.UPath("more.json")));
    }

    /// A folder in the folder, with a dictionary for each of `languages`, in which "/language" is the file's name.
    Dir MakeLanguages(const std::vector<std::string>& languages) {
        const Dir folder(mFolder.UPath("locale"));
        folder.Create();
        for (const std::string& language : languages)
            zeltests::WriteFile(mFolder.Path("locale/" + language + ".json"), R"({"/language": ")" + language + "\"}");
        return folder;
    }

    static std::string Find(const Dir& folder, const std::vector<std::string>& wanted) {
        const zelcore::utf8string found = UTF16to8(Localizer::FindLanguage(folder, ToUTF16(wanted)));
        return std::string(found.begin(), found.end());
    }

    static std::vector<zelcore::ustring> ToUTF16(const std::vector<std::string>& texts) {
        std::vector<zelcore::ustring> converted;
        converted.reserve(texts.size());
        for (const std::string& text : texts) converted.push_back(UTF8to16(text));
        return converted;
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

TEST_F(LocalizerTest, AddedDictionaryKeepsWhatItDoesNotName) {
    Load(R"({"/a": "1", "/b": "2"})");
    Add(R"({"/b": "3", "/c": "4"})");
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("1"));
    EXPECT_EQ(Localize("$$$/b=default"), UTF8to16("3"));
    EXPECT_EQ(Localize("$$$/c=default"), UTF8to16("4"));
}

TEST_F(LocalizerTest, BadAddedDictionaryChangesNothing) {
    Load(R"({"/a": "kept"})");
    for (const char* const bad : {"", "[]", R"({"/a": "new", "/b": 1})", R"({"/a": "new")"})
        EXPECT_THROW(Add(bad), SerializationError) << bad;
    EXPECT_THROW(Add(R"({"/a": "new"})" + std::string(4u << 20, ' ')), SerializationError);
    EXPECT_THROW(Localizer::GetInstance().AddDictionary(File(mFolder.UPath("missing"))),
                 zelcore::filesupport::FileError);
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("kept"));
    EXPECT_EQ(Localize("$$$/b=default"), UTF8to16("default"));
}

TEST_F(LocalizerTest, LanguageIsFoundByEachOfItsNames) {
    const Dir folder = MakeLanguages({"de", "pt-BR", "zh-Hant", "es-419"});
    for (const char* const name : {"de", "DE", "de-AT", "de_AT", "de_AT.UTF-8", "de_DE.UTF-8@euro", "de@euro",
                                   "de.utf8", "de-Latn-AT", "de-CH-1996"})
        EXPECT_EQ(Find(folder, {name}), "de") << name;
    for (const char* const name : {"pt-BR", "pt_br.UTF-8", "PT-br", "pt-BR-x-mine"})
        EXPECT_EQ(Find(folder, {name}), "pt-BR") << name;
    EXPECT_EQ(Find(folder, {"zh-HANT-tw"}), "zh-Hant");
    EXPECT_EQ(Find(folder, {"es_419"}), "es-419");
}

TEST_F(LocalizerTest, RegionsDictionaryComesBeforeTheLanguages) {
    const Dir folder = MakeLanguages({"de", "de-AT"});
    EXPECT_EQ(Find(folder, {"de-AT"}), "de-AT");
    EXPECT_EQ(Find(folder, {"de-CH"}), "de");
}

TEST_F(LocalizerTest, AnotherRegionsDictionaryIsNotTaken) {
    const Dir folder = MakeLanguages({"pt-BR"});
    EXPECT_EQ(Find(folder, {"pt-PT"}), "");
    EXPECT_EQ(Find(folder, {"pt"}), "");
}

TEST_F(LocalizerTest, FirstWantedLanguageThatIsThereIsTaken) {
    const Dir folder = MakeLanguages({"de", "fr"});
    EXPECT_EQ(Find(folder, {"it-IT", "fr-CA", "de"}), "fr");
    EXPECT_EQ(Find(folder, {"it", "ja"}), "");
    EXPECT_EQ(Find(folder, {}), "");
}

TEST_F(LocalizerTest, EnglishAndCAreTheDefaultsAndEndTheSearch) {
    const Dir folder = MakeLanguages({"de", "en", "c"});
    for (const char* const name : {"en", "en-US", "EN_gb.UTF-8", "C", "C.UTF-8", "POSIX"}) {
        EXPECT_EQ(Find(folder, {name, "de"}), "en") << name;
        EXPECT_FALSE(Localizer::GetInstance().AddLanguage(folder, ToUTF16({name, "de"}))) << name;
    }
    EXPECT_EQ(Find(folder, {"it", "en", "de"}), "en");
    EXPECT_EQ(Localize("$$$/language=default"), UTF8to16("default"));
}

TEST_F(LocalizerTest, EnglishOfARegionMayHaveADictionary) {
    const Dir folder = MakeLanguages({"en-GB"});
    EXPECT_EQ(Find(folder, {"en_GB.UTF-8"}), "en-GB");
    EXPECT_EQ(Find(folder, {"en_US.UTF-8"}), "en");
}

TEST_F(LocalizerTest, HostileLanguageNamesDoNotLeaveTheFolder) {
    const Dir folder = MakeLanguages({"de"});
    const std::string outside = mFolder.Path("outside");
    zeltests::WriteFile(outside + ".json", "{}");
    zeltests::WriteFile(mFolder.Path("locale/.json"), "{}");
    zeltests::WriteFile(mFolder.Path("locale/de-.json"), "{}");
    for (const std::string& name :
         {std::string("../outside"), outside, std::string("de/../../outside"), std::string(".."), std::string(),
          std::string("-"), std::string("de-"), std::string("_de"), std::string("de\0x", 4), std::string("de/"),
          std::string("d\xC3\xA9"), std::string("\xFF"), std::string("12"), std::string("deutschland"),
          std::string(4096, 'd'), "de-" + std::string(4096, '-'), std::string(100000, '/')})
        EXPECT_EQ(Find(folder, {name}), "") << name.substr(0, 100);
    EXPECT_EQ(Find(folder, {"../outside", "", "de"}), "de");
}

TEST_F(LocalizerTest, FolderInPlaceOfADictionaryIsNone) {
    const Dir folder = MakeLanguages({"fr"});
    Dir(mFolder.UPath("locale/de.json")).Create();
    EXPECT_EQ(Find(folder, {"de", "fr"}), "fr");
}

TEST_F(LocalizerTest, LanguageAddsItsTextsToTheDictionary) {
    Load(R"({"/a": "kept"})");
    EXPECT_TRUE(Localizer::GetInstance().AddLanguage(MakeLanguages({"de"}), ToUTF16({"de_AT.UTF-8"})));
    EXPECT_EQ(Localize("$$$/language=default"), UTF8to16("de"));
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("kept"));
}

TEST_F(LocalizerTest, LanguageThatIsNotThereChangesNothing) {
    Load(R"({"/a": "kept"})");
    EXPECT_FALSE(Localizer::GetInstance().AddLanguage(MakeLanguages({"fr"}), ToUTF16({"de"})));
    EXPECT_FALSE(Localizer::GetInstance().AddLanguage(Dir(mFolder.UPath("missing")), ToUTF16({"fr"})));
    EXPECT_EQ(Localize("$$$/language=default"), UTF8to16("default"));
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("kept"));
}

TEST_F(LocalizerTest, DamagedLanguageIsAnErrorAndChangesNothing) {
    Load(R"({"/a": "kept"})");
    const Dir folder = MakeLanguages({"de", "fr"});
    zeltests::WriteFile(mFolder.Path("locale/de.json"), R"({"/a": "new")");
    EXPECT_THROW(Localizer::GetInstance().AddLanguage(folder, ToUTF16({"de", "fr"})), SerializationError);
    EXPECT_EQ(Localize("$$$/a=default"), UTF8to16("kept"));
}

TEST_F(LocalizerTest, ClientNameIsTheHosts) {
    EXPECT_EQ(zelcore::config::GetClientName(), UTF8to16("Tessaly"));
    zelcore::config::SetClientName(UTF8to16("Other"));
    EXPECT_EQ(zelcore::config::GetClientName(), UTF8to16("Other"));
    zelcore::config::SetClientName(UTF8to16("Tessaly"));
}
