#include "UserLanguage.h"

#include <exception>
#include <iostream>
#include <memory>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "TerminalText.h"

namespace tessaly {

namespace {

using zelcore::ustring;
using zelcore::config::Localizer;
using zelcore::filesupport::Dir;
using zelcore::utility::AsciiToUTF16;

Dir GetLocaleFolder(const char* part) {
    const Dir aboveProgram = zelcore::filesupport::File(Dir::AppDir().FullPath()).GetDir();
    return Dir(aboveProgram.FullPath() + AsciiToUTF16("/share/") + AsciiToUTF16(part) + AsciiToUTF16("/locale"));
}

void AddTexts(const Dir& folder, const UserLanguage::Languages& wanted) {
    try {
        Localizer::GetInstance().AddLanguage(folder, wanted);
    } catch (const std::exception& error) {
        std::cerr << "tessaly: texts in '" << TerminalText::FromText(folder.FullPath())
                  << "' could not be loaded: " << TerminalText::MakePrintable(error.what()) << '\n';
    }
}

// What Qt's own windows say, such as the folder chooser. Not every system has these texts installed.
void AddQtsTexts(const ustring& language) {
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr) return;
    auto translator = std::make_unique<QTranslator>(application);
    const QString name = zelui::qt::ToQString(language).replace(QLatin1Char('-'), QLatin1Char('_'));
    if (translator->load(QStringLiteral("qtbase_") + name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator.release());
}

}  // namespace

UserLanguage::Languages UserLanguage::GetUsersLanguages() {
    Languages languages;
    for (const QString& language : QLocale::system().uiLanguages())
        languages.push_back(zelui::qt::FromQString(language));
    return languages;
}

void UserLanguage::Load(const std::string& chosen, const Languages& users) {
    const std::string asked = chosen.empty() ? qgetenv("TESSALY_LANGUAGE").toStdString() : chosen;
    const Languages wanted = asked.empty() ? users : Languages{zelcore::utility::UTF8to16(asked)};
    const Dir librarys = GetLocaleFolder("zelaudiofilterhostui");
    const ustring language = Localizer::FindLanguage(librarys, wanted);
    if (language.empty() && !asked.empty())
        std::cerr << "tessaly: there are no texts in the language '" << TerminalText::MakePrintable(asked) << "'\n";
    if (language.empty() || language == Localizer::GetDefaultLanguage()) return;
    // One language for all, whatever each of them may have.
    AddTexts(librarys, {language});
    AddTexts(GetLocaleFolder("tessaly"), {language});
    AddQtsTexts(language);
}

}  // namespace tessaly
