#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Dir.h>
#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>

#include "KeptVariable.h"
#include "UserLanguage.h"

using tessaly::UserLanguage;
using zelcore::filesupport::Dir;
using zeltests::KeptVariable;

namespace {

/// A program's folder "bin" with a "share" beside it, in which there are dictionaries of both parts.
class UserLanguageTest : public ::testing::Test {
protected:
    UserLanguageTest() {
        for (const char* const language : {"de", "fr"}) {
            WriteDictionary("zelaudiofilterhostui", language, R"({"/part/library": ")" + std::string(language) + "\"}");
            WriteDictionary("tessaly", language, R"({"/part/program": ")" + std::string(language) + "\"}");
        }
        Dir::SetAppDir(Dir(mFolder.UPath("bin")));
        mChoice.Unset();
    }

    ~UserLanguageTest() override {
        Dir::SetAppDir(Dir());
        zelcore::config::Localizer::GetInstance().Clear();
    }

    void WriteDictionary(const std::string& part, const std::string& language, const std::string& json) {
        const std::string folder = mFolder.Path("share/" + part + "/locale");
        std::filesystem::create_directories(folder);
        zeltests::WriteFile(folder + "/" + language + ".json", json);
    }

    /// What Load wrote to the error stream.
    static std::string Load(const std::string& chosen, const std::vector<std::string>& users = {}) {
        UserLanguage::Languages languages;
        languages.reserve(users.size());
        for (const std::string& user : users) languages.push_back(zelcore::utility::UTF8to16(user));
        ::testing::internal::CaptureStderr();
        UserLanguage::Load(chosen, languages);
        return ::testing::internal::GetCapturedStderr();
    }

    static std::string GetLibrarysText() { return GetText("$$$/part/library=default"); }
    static std::string GetProgramsText() { return GetText("$$$/part/program=default"); }
    static std::string GetText(const char* keyAndDefault) {
        const zelcore::utf8string text = zelcore::utility::UTF16to8(zelcore::config::Localize(keyAndDefault));
        return std::string(text.begin(), text.end());
    }

    zeltests::ThrowAwayFolder mFolder;
    KeptVariable mChoice{"TESSALY_LANGUAGE"};
};

}  // namespace

TEST_F(UserLanguageTest, ChosenLanguageIsThatOfBothParts) {
    EXPECT_EQ(Load("de_AT.UTF-8"), "");
    EXPECT_EQ(GetLibrarysText(), "de");
    EXPECT_EQ(GetProgramsText(), "de");
}

TEST_F(UserLanguageTest, EnvironmentChoosesWhereNothingElseDoes) {
    mChoice.Set("fr");
    EXPECT_EQ(Load("", {"de"}), "");
    EXPECT_EQ(GetLibrarysText(), "fr");
    EXPECT_EQ(GetProgramsText(), "fr");
}

TEST_F(UserLanguageTest, ChoiceComesBeforeTheEnvironment) {
    mChoice.Set("fr");
    EXPECT_EQ(Load("de"), "");
    EXPECT_EQ(GetProgramsText(), "de");
}

TEST_F(UserLanguageTest, EmptyVariableChoosesNothing) {
    mChoice.Set("");
    EXPECT_EQ(Load("", {"fr"}), "");
    EXPECT_EQ(GetProgramsText(), "fr");
}

TEST_F(UserLanguageTest, UsersLanguagesAreTriedInTheirOrder) {
    EXPECT_EQ(Load("", {"it-IT", "de-AT", "fr"}), "");
    EXPECT_EQ(GetLibrarysText(), "de");
    EXPECT_EQ(GetProgramsText(), "de");
}

TEST_F(UserLanguageTest, UserOfALanguageThatIsNotThereIsNotTroubled) {
    EXPECT_EQ(Load("", {"it"}), "");
    EXPECT_EQ(GetProgramsText(), "default");
}

TEST_F(UserLanguageTest, UserOfEnglishHasTheDefaultTexts) {
    for (const char* const first : {"C", "en-US"}) {
        EXPECT_EQ(Load("", {first, "de"}), "") << first;
        EXPECT_EQ(GetLibrarysText(), "default") << first;
        EXPECT_EQ(GetProgramsText(), "default") << first;
    }
}

TEST_F(UserLanguageTest, EnglishIsChosenAgainstTheUsersLanguages) {
    EXPECT_EQ(Load("en", {"de"}), "");
    EXPECT_EQ(GetProgramsText(), "default");
}

TEST_F(UserLanguageTest, ChosenLanguageThatIsNotThereIsTold) {
    EXPECT_EQ(Load("it"), "tessaly: there are no texts in the language 'it'\n");
    EXPECT_EQ(Load("../de\x1B[2J"), "tessaly: there are no texts in the language '../de?[2J'\n");
    EXPECT_EQ(GetProgramsText(), "default");
}

TEST_F(UserLanguageTest, DamagedDictionaryIsToldAndTheOtherOneUsed) {
    WriteDictionary("tessaly", "de", R"({"/part/program": "de")");
    const std::string told = Load("de");
    EXPECT_EQ(told.rfind("tessaly: texts in '" + mFolder.Path("share/tessaly/locale") + "' could not be loaded: ", 0),
              0u)
        << told;
    EXPECT_EQ(GetLibrarysText(), "de");
    EXPECT_EQ(GetProgramsText(), "default");
}

TEST_F(UserLanguageTest, PartWithoutTheLanguageKeepsItsDefaults) {
    std::filesystem::remove(mFolder.Path("share/tessaly/locale/de.json"));
    EXPECT_EQ(Load("de"), "");
    EXPECT_EQ(GetLibrarysText(), "de");
    EXPECT_EQ(GetProgramsText(), "default");
}

TEST_F(UserLanguageTest, ProgramWithoutDictionariesHasTheDefaultTexts) {
    Dir::SetAppDir(Dir(mFolder.UPath("elsewhere/bin")));
    EXPECT_EQ(Load("", {"de"}), "");
    EXPECT_EQ(GetProgramsText(), "default");
}
