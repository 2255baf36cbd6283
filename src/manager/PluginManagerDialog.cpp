#include "manager/PluginManagerDialog.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <boost/bind/bind.hpp>
#include <boost/make_shared.hpp>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhost/PluginTechnology.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/FileError.h>
#include <zelcore/Localizer.h>
#include <zelcore/Signals.h>
#include <zelcore/Utf.h>
#include <zelui/MessageBox.h>
#include <zelui/OS_FolderChooserDialog.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_ClearButtonTextEdit.h>

#include "manager/FolderList.h"
#include "manager/PluginList.h"
#include "manager/PluginManagerViews.h"
#include "scan/PreferenceFiles.h"

namespace zelaudiofilterhostui {

using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelaudiofilterhost::PluginTechnology;
using zelcore::config::Localize;
using zelcore::geom::RectF;
using zelcore::utility::AsciiToUTF16;
using zelui::controls::UI_Button;
using zelui::controls::UI_Checkbox;
using zelui::controls::UI_ClearButtonTextEdit;
using zelui::controls::UI_ControlChangedMessage;
using zelui::controls::UI_InteractiveControlChangedMessage;
using zelui::controls::UI_MultiColumnTree;
using zelui::ui::UI_Node;

namespace messagebox = zelui::dialogs::messagebox;

namespace {

constexpr float kMinimumSize = 400.0f;
constexpr int kTabKey = 9;

/// The dialog's own classes, by the names that the layout archive gives them.
boost::intrusive_ptr<UI_Node> MakeNode(const zelcore::ustring& className) {
    if (className == AsciiToUTF16("BoxView")) return new BoxView;
    if (className == AsciiToUTF16("PluginMultiColumnTree")) return new PluginMultiColumnTree;
    if (className == AsciiToUTF16("UI_SearchBox")) return new zelui::controls::UI_SearchBox;
    return nullptr;
}

/// The plug-in manager dialog.
///
/// Its nodes are those of the layout archive "AudioPluginManager". The archive may lack a list; buttons and check boxes
/// are taken to be there.
class PluginManagerDialog : public zelui::ui::UI_ArchivedDialog {
public:
    PluginManagerDialog(const zelui::drawbot::SupplierInterface* supplier,
                        const zelui::utility::OS_ResourceManager* resources, AudioPluginManagerSettings& settings,
                        HWND parent);

    Response RunModal() override;
    bool UI_DoPreKeyboardEvent(const zelui::ui::KeyboardEvent& event) override;
    void UI_SizeChanged(const zelcore::geom::RectF& frame) override;

protected:
    /// Stores what is remembered in the settings.
    ~PluginManagerDialog() override;

private:
    void FindControls();
    void SetUpFolderList();
    void SetUpPluginList();
    void SetUpFind();
    void MakeRoomForFind();
    void SubscribeButtons();
    void Subscribe(const std::string& id, void (PluginManagerDialog::*handler)());
    void Unsubscribe();

    void RefillPlugins(bool fitColumns, bool scrollToTop);
    void EnableAll(bool enable);
    bool ScansInSeparateProcess() const { return mSeparateProcess->GetValue() == 1; }
    const zelui::drawbot::SupplierInterface& GetDrawing() const;

    void TellOfFailure(const std::function<void()>& work);
    void Reload(const zelaudiofilterhost::PluginLocator& locator);

    void OnUpdate();
    void OnEnableAll() { EnableAll(true); }
    void OnDisableAll() { EnableAll(false); }
    void OnAddDirectory();
    void OnRemoveDirectory();
    void OnDefaultDirectories();
    void OnReload(const zelaudiofilterhost::PluginLocator& locator);
    void OnFolderSelectionChanged();
    void OnFindChangedInteractively(zelui::controls::UI_InteractiveControlChangedMessage* message);
    void OnFindChanged(zelui::controls::UI_ControlChangedMessage* message);
    void ApplyFilter();
    void OnPluginInfosChanged();

    AudioPluginManagerSettings& mSettings;
    const boost::intrusive_ptr<zelaudiofilterhost::PluginTechnology> mFolderTechnology;
    boost::intrusive_ptr<zelui::controls::UI_MultiColumnTree> mPluginTree;
    boost::intrusive_ptr<zelui::controls::UI_Button> mRemoveDirectoryButton;
    boost::intrusive_ptr<zelui::controls::UI_Button> mEnableAllButton;
    boost::intrusive_ptr<zelui::controls::UI_Button> mDisableAllButton;
    boost::intrusive_ptr<zelui::controls::UI_Checkbox> mRescanExisting;
    boost::intrusive_ptr<zelui::controls::UI_Checkbox> mSeparateProcess;
    boost::intrusive_ptr<zelui::ui::UI_Node> mFindLabel;
    boost::intrusive_ptr<zelui::controls::UI_ClearButtonTextEdit> mFindBox;
    std::vector<boost::intrusive_ptr<zelui::controls::UI_Button>> mSubscribedButtons;
    std::unique_ptr<FolderList> mFolderList;
    std::unique_ptr<PluginList> mPluginList;
    zelcore::ustring mAppliedFilter;
    boost::signals::scoped_connection mPluginInfosConnection;
};

PluginManagerDialog::PluginManagerDialog(const zelui::drawbot::SupplierInterface* supplier,
                                         const zelui::utility::OS_ResourceManager* resources,
                                         AudioPluginManagerSettings& settings, HWND parent)
    : UI_ArchivedDialog(supplier, resources, "AudioPluginManager",
                        Localize("$$$/AudioPluginManager/DialogTitle=Audio Plug-In Manager"), parent, MakeNode),
      mSettings(settings),
      mFolderTechnology(
          PluginModuleInfoManager::GetInstance().GetPluginTechnology(zelaudiofilterhost::kTechnologyVST)) {
    SetMinimumSize({kMinimumSize, kMinimumSize});
    FindControls();
    SetUpFolderList();
    SetUpPluginList();
    const auto ok = GetNodeForIDAs<UI_Button>("OKButton");
    const auto cancel = GetNodeForIDAs<UI_Button>("CancelButton");
    SetOkButton(ok);
    SetCancelButton(cancel);
    SetUpFind();
    if (!mSeparateProcess->UI_IsShown()) MakeRoomForFind();
    FlipNodePositionsOnMac(*ok, *cancel);
    SubscribeButtons();
    mRemoveDirectoryButton->UI_SetDisabled(true);
    if (mFolderList) mFolderList->Refill();
    RefillPlugins(true, true);
}

PluginManagerDialog::~PluginManagerDialog() {
    mSettings.rescanExisting = mRescanExisting->GetValue() == 1;
    if (mPluginList) {
        mSettings.sortColumn = mPluginList->GetSortColumn();
        mSettings.sortAscending = mPluginList->IsSortAscending();
    }
    Unsubscribe();
}

// Construction

void PluginManagerDialog::FindControls() {
    mPluginTree = GetNodeForIDAs<UI_MultiColumnTree>("PluginList");
    mRemoveDirectoryButton = GetNodeForIDAs<UI_Button>("RemoveDirectoryButton");
    mEnableAllButton = GetNodeForIDAs<UI_Button>("EnableAllButton");
    mDisableAllButton = GetNodeForIDAs<UI_Button>("DisableAllButton");
    mRescanExisting = GetNodeForIDAs<UI_Checkbox>("RescanExisting");
    mRescanExisting->SetValue(mSettings.rescanExisting ? 1 : 0);
    mSeparateProcess = GetNodeForIDAs<UI_Checkbox>("SeparateProcess");
    // At every opening: to scan in the application itself is for those who look for a fault.
    mSeparateProcess->SetValue(1);
    if (!zelcore::debug::DebugDatabase::Instance().GetBool("AudioPluginManager.ShowExternalCheckBox", false))
        mSeparateProcess->UI_Hide();
}

void PluginManagerDialog::SetUpFolderList() {
    const auto tree = GetNodeForIDAs<UI_MultiColumnTree>("DirectoryList");
    if (!tree) return;
    mFolderList = std::make_unique<FolderList>(tree, mFolderTechnology, GetDrawing(),
                                               boost::bind(&PluginManagerDialog::OnFolderSelectionChanged, this));
}

void PluginManagerDialog::SetUpPluginList() {
    if (mPluginTree)
        mPluginList =
            std::make_unique<PluginList>(mPluginTree, GetDrawing(), mSettings,
                                         boost::bind(&PluginManagerDialog::OnReload, this, boost::placeholders::_1));
    mPluginInfosConnection = PluginModuleInfoManager::GetInstance().GetPluginInfosChangedSignal().connect(
        boost::bind(&PluginManagerDialog::OnPluginInfosChanged, this));
}

void PluginManagerDialog::SetUpFind() {
    using namespace boost::placeholders;
    mFindLabel = GetNodeForID("FindStaticText");
    mFindBox = GetNodeForIDAs<UI_ClearButtonTextEdit>("FindTextEdit");
    mAppliedFilter = mFindBox->GetValue();
    mFindBox->NotifyWhenChangedInteractively(boost::make_shared<UI_ClearButtonTextEdit::InteractivelyChangedFunction>(
        boost::bind(&PluginManagerDialog::OnFindChangedInteractively, this, _1)));
    mFindBox->NotifyWhenChanged(boost::make_shared<UI_ClearButtonTextEdit::ChangedFunction>(
        boost::bind(&PluginManagerDialog::OnFindChanged, this, _1)));
}

// What the hidden check box leaves free goes to the find box, whose right edge stays.
void PluginManagerDialog::MakeRoomForFind() {
    const RectF box = mSeparateProcess->UI_GetLocalRectF();
    UI_Node* const options = mSeparateProcess->UI_GetParentNode();
    RectF optionsFrame = options->UI_GetLocalRectF();
    optionsFrame.width -= box.width;
    options->UI_SetLocalRectF(optionsFrame);
    RectF labelFrame = mFindLabel->UI_GetLocalRectF();
    labelFrame.left = box.left;
    mFindLabel->UI_SetLocalRectF(labelFrame);
    RectF findFrame = mFindBox->UI_GetLocalRectF();
    findFrame.left -= box.width;
    findFrame.width += box.width;
    mFindBox->UI_SetLocalRectF(findFrame);
}

void PluginManagerDialog::SubscribeButtons() {
    Subscribe("UpdateButton", &PluginManagerDialog::OnUpdate);
    Subscribe("AddDirectoryButton", &PluginManagerDialog::OnAddDirectory);
    Subscribe("RemoveDirectoryButton", &PluginManagerDialog::OnRemoveDirectory);
    Subscribe("DefaultDirectoriesButton", &PluginManagerDialog::OnDefaultDirectories);
    Subscribe("EnableAllButton", &PluginManagerDialog::OnEnableAll);
    Subscribe("DisableAllButton", &PluginManagerDialog::OnDisableAll);
}

void PluginManagerDialog::Subscribe(const std::string& id, void (PluginManagerDialog::*handler)()) {
    const auto button = GetNodeForIDAs<UI_Button>(id);
    button->NotifyWhenChanged(boost::make_shared<UI_Button::ButtonChangedFunction>(boost::bind(handler, this)));
    mSubscribedButtons.push_back(button);
}

// The controls may be held by others, and must not call a dialog that is gone.
void PluginManagerDialog::Unsubscribe() {
    for (const auto& button : mSubscribedButtons)
        button->NotifyWhenChanged(boost::shared_ptr<UI_Button::ButtonChangedFunction>());
    mFindBox->NotifyWhenChangedInteractively(nullptr);
    mFindBox->NotifyWhenChanged(nullptr);
}

const zelui::drawbot::SupplierInterface& PluginManagerDialog::GetDrawing() const {
    return GetSupplier() != nullptr ? *GetSupplier() : *zelui::drawbot::SupplierInterface::GetDefault();
}

// The dialog as a window

PluginManagerDialog::Response PluginManagerDialog::RunModal() {
    GetContentNode()->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    return OS_Dialog::RunModal();
}

// The list moves from cell to cell with the Tab key as long as there is one to go to.
bool PluginManagerDialog::UI_DoPreKeyboardEvent(const zelui::ui::KeyboardEvent& event) {
    if (!mPluginTree || !mPluginTree->UI_HasKeyboardFocus(false) || event.GetOSCode() != kTabKey) return false;
    return mPluginTree->UI_DoKeyboardEvent(event);
}

// In a narrow dialog the find controls would stand on the row of buttons and check boxes.
void PluginManagerDialog::UI_SizeChanged(const RectF& frame) {
    UI_ArchivedDialog::UI_SizeChanged(frame);
    // Not all is found yet when the minimum size already changes it.
    if (!mFindBox) return;
    const float optionsRight = mSeparateProcess->UI_GetParentNode()->UI_GetLocalRectF().Right();
    mFindLabel->UI_Show(mFindLabel->UI_GetLocalRectF().left > optionsRight);
    mFindBox->UI_Show(mFindBox->UI_GetLocalRectF().left > optionsRight);
}

// Plug-ins

void PluginManagerDialog::RefillPlugins(bool fitColumns, bool scrollToTop) {
    if (mPluginList) mPluginList->Refill(mAppliedFilter, fitColumns, scrollToTop);
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    const bool isEmpty = catalogue.PluginInfoBegin() == catalogue.PluginInfoEnd();
    mEnableAllButton->UI_SetDisabled(isEmpty);
    mDisableAllButton->UI_SetDisabled(isEmpty);
}

void PluginManagerDialog::EnableAll(bool enable) {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info)
        (*info)->SetEnabled(enable);
    RefillPlugins(false, false);
}

void PluginManagerDialog::OnUpdate() {
    const boost::intrusive_ptr<PluginManagerDialog> self(this);
    const bool rescanExisting = mRescanExisting->GetValue() == 1;
    const bool separateProcess = ScansInSeparateProcess();
    TellOfFailure([&] {
        AudioPluginScan scan(GetSupplier());
        scan.ScanForPlugins(GetPlatformWindow(false), rescanExisting, separateProcess);
    });
    RefillPlugins(true, true);
}

// Nobody above the event loop would hear of it, and the list has to follow whatever became of the catalogue.
void PluginManagerDialog::TellOfFailure(const std::function<void()>& work) {
    try {
        work();
    } catch (const zelcore::filesupport::FileError& error) {
        messagebox::ShowCaution(GetSupplier(), zelcore::config::GetClientName(), error.GetLocalizedText(),
                                GetPlatformWindow(false));
    }
}

void PluginManagerDialog::OnReload(const PluginLocator& locator) {
    const boost::intrusive_ptr<PluginManagerDialog> self(this);
    TellOfFailure([&] { Reload(locator); });
    RefillPlugins(true, true);
}

void PluginManagerDialog::Reload(const PluginLocator& locator) {
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    bans.RemoveBannedPlugin(locator);
    bans.SaveConfiguration(GetBanListFile());
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    std::vector<PluginLocator> gone;
    catalogue.CollectPotentialPlugins(true, gone);
    if (std::find(gone.begin(), gone.end(), locator) != gone.end()) {
        catalogue.RemovePluginLocators({locator});
        catalogue.SaveConfiguration(GetCatalogueFile(), true);
    } else {
        AudioPluginScan scan(GetSupplier());
        scan.ScanForPlugins(GetPlatformWindow(false), std::vector<PluginLocator>{locator}, ScansInSeparateProcess());
    }
}

// The dialog fills its list itself after each thing that it does.
void PluginManagerDialog::OnPluginInfosChanged() {}

// Finding

void PluginManagerDialog::OnFindChangedInteractively(UI_InteractiveControlChangedMessage* message) {
    mFindBox->EditTextChangedInteractively(message);
    ApplyFilter();
}

void PluginManagerDialog::OnFindChanged(UI_ControlChangedMessage* message) {
    mFindBox->EditTextChanged(message);
    ApplyFilter();
}

void PluginManagerDialog::ApplyFilter() {
    if (mFindBox->GetValue() == mAppliedFilter) return;
    mAppliedFilter = mFindBox->GetValue();
    RefillPlugins(false, true);
}

// Folders

void PluginManagerDialog::OnFolderSelectionChanged() {
    mRemoveDirectoryButton->UI_SetDisabled(!mFolderList->IsAnySelected());
}

void PluginManagerDialog::OnAddDirectory() {
    const boost::intrusive_ptr<PluginManagerDialog> self(this);
    zelui::dialogs::OS_FolderChooserDialog chooser(GetPlatformWindow(false),
                                                   zelui::dialogs::OS_FolderChooserDialog::kMayMakeFolders);
    chooser.SetWindowTitle(Localize("$$$/AudioPluginManager/Browse/Title=Choose a Plug-In Folder:"));
    chooser.RunModal();
    const zelcore::filesupport::Dir& folder = chooser.GetDirectory();
    if (folder.Exists()) mFolderTechnology->AddPluginDirectories({folder.FullPath()});
}

void PluginManagerDialog::OnRemoveDirectory() {
    if (!mFolderList) return;
    const std::vector<zelcore::ustring> folders = mFolderList->GetSelectedFolders();
    if (!folders.empty()) mFolderTechnology->RemovePluginDirectories(folders);
}

void PluginManagerDialog::OnDefaultDirectories() {
    const boost::intrusive_ptr<PluginManagerDialog> self(this);
    if (mFolderTechnology->DirectoryBegin() != mFolderTechnology->DirectoryEnd()) {
        const zelcore::ustring question = Localize(
            "$$$/AudioPluginManager/DefaultFoldersWarning=Resetting the application's VST Plug-In folder settings to "
            "the default will delete any custom folders that have been specified. Do you want to continue?");
        const messagebox::Button answer = messagebox::Messagebox(
            GetSupplier(), zelcore::config::GetClientName(), question,
            messagebox::kYesButton | messagebox::kNoAnswerButton, messagebox::kNoAnswerButton, messagebox::kIconCaution,
            GetPlatformWindow(false), messagebox::ButtonHandler(), 0, 0);
        if (answer != messagebox::kYesButton) return;
    }
    PluginModuleInfoManager::GetInstance().ResetToDefaultFolders();
}

}  // namespace

boost::intrusive_ptr<zelui::ui::UI_ArchivedDialog> MakePluginManagerDialog(
    const zelui::drawbot::SupplierInterface* supplier, const zelui::utility::OS_ResourceManager* resources,
    AudioPluginManagerSettings& settings, HWND parent) {
    return new PluginManagerDialog(supplier, resources, settings, parent);
}

}  // namespace zelaudiofilterhostui
