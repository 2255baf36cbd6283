#include <cstdlib>
#include <iostream>

#include <gtest/gtest.h>
#include <zelcore/Utf.h>

#include "KeptVariable.h"
#include "UserLanguage.h"

using tessaly::UserLanguage;
using zeltests::KeptVariable;

namespace {

[[noreturn]] void TellLanguages() {
    const UserLanguage::Languages languages = UserLanguage::GetUsersLanguages();
    if (!languages.empty()) std::cerr << "first language: " << zelcore::utility::UTF16to8(languages.front()) << ",\n";
    std::exit(0);
}

}  // namespace

// Qt looks at the environment once, so each locale needs a process of its own.
TEST(UserLanguageDeathTest, SystemsLocaleSaysTheUsersLanguages) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    KeptVariable language("LANGUAGE");
    KeptVariable all("LC_ALL");
    KeptVariable messages("LC_MESSAGES");
    KeptVariable locale("LANG");
    for (KeptVariable* const variable : {&language, &all, &messages}) variable->Unset();
    locale.Set("de_AT.UTF-8");
    EXPECT_EXIT(TellLanguages(), ::testing::ExitedWithCode(0), "first language: de-AT,");
    all.Set("C.UTF-8");
    EXPECT_EXIT(TellLanguages(), ::testing::ExitedWithCode(0), "first language: C,");
    language.Set("fr_CA:de");
    EXPECT_EXIT(TellLanguages(), ::testing::ExitedWithCode(0), "first language: fr-CA,");
}
