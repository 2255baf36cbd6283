#include "PluginManagerWindow.h"

#include <iostream>

#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelcore/FileError.h>
#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelui/MessageBox.h>
#include <zelui/SupplierInterface.h>

#include "ManagerSettingsFile.h"

namespace tessaly {

using zelcore::config::Localize;

namespace messagebox = zelui::dialogs::messagebox;

namespace {

bool AsksToOpenAgain(const zelcore::filesupport::FileError& error, HWND parent) {
    const zelcore::ustring question = zelcore::utility::FillPlaceholders(
        Localize("$$$/tessaly/CatalogueNotKept=The plug-in manager's changes could not be saved or taken back: "
                 "@0\n\nOpen the plug-in manager again, with everything as it was left? Otherwise what was not saved "
                 "is lost."),
        {error.GetLocalizedText()});
    return messagebox::Messagebox(zelui::drawbot::SupplierInterface::GetDefault(), zelcore::config::GetClientName(),
                                  question, messagebox::kYesButton | messagebox::kNoAnswerButton,
                                  messagebox::kYesButton, messagebox::kIconCaution, parent, messagebox::ButtonHandler(),
                                  0, 0) == messagebox::kYesButton;
}

}  // namespace

bool PluginManagerWindow::Run(HWND parent) {
    zelaudiofilterhostui::AudioPluginManagerSettings settings = ManagerSettingsFile::Load();
    bool isKept = false;
    for (bool again = true; again && !isKept;) {
        try {
            zelaudiofilterhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(
                zelui::drawbot::SupplierInterface::GetDefault(), settings, parent);
            isKept = true;
        } catch (const zelcore::filesupport::FileError& error) {
            again = AsksToOpenAgain(error, parent);
        }
    }
    if (!ManagerSettingsFile::Save(settings))
        std::cerr << "tessaly: the plug-in manager's place and sort order could not be saved\n";
    return isKept;
}

}  // namespace tessaly
