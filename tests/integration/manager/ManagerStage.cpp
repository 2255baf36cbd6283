#include "ManagerStage.h"

#include <stdexcept>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/Module.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/MainLoop.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_SubView.h>

#include "support/WaitFor.h"

namespace zeltests {

using namespace zelaudiofilterhost;
using zelcore::filesupport::File;
using zelcore::utility::UTF8to16;
using zelui::controls::UI_Button;
using zelui::controls::UI_Checkbox;
using zelui::ui::UI_Node;

namespace {

constexpr int kEnabledColumn = 0;
constexpr int kStatusColumn = 3;

void EmptyProfile() {
    const File none(UTF8to16("/there/is/no/such/file"));
    PluginModuleInfoManager::GetInstance().LoadConfiguration(none);
    BannedPluginManager::GetInstance().LoadConfiguration(none);
}

UI_Node* FindBelow(UI_Node& node, const std::string& id) {
    const zelcore::utf8string own = node.UI_GetID();
    if (std::string(own.begin(), own.end()) == id) return &node;
    const zelui::ui::UI_Container* const container = node.UI_AsContainer();
    for (std::size_t i = 0; container != nullptr && i < container->ChildCount(); ++i)
        if (UI_Node* const found = FindBelow(*container->ChildAt(i), id)) return found;
    return nullptr;
}

template <typename T>
T* GetControl(const boost::intrusive_ptr<zelui::ui::UI_SubView>& cell) {
    return cell && cell->ChildCount() > 0 ? dynamic_cast<T*>(cell->ChildAt(0).get()) : nullptr;
}

QTableView& GetTable(const UI_Node& tree) {
    QWidget* const widget = zelui::qt::GetWidget(tree);
    QTableView* const table = qobject_cast<QTableView*>(widget);
    return table != nullptr ? *table : *widget->findChild<QTableView*>();
}

}  // namespace

ManagerStage::ManagerStage() {
    // Qt keeps in a file of the user where folder choosers have been.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(mFolder.GetPath()));
    zelaudiofilterhostui::Initialize();
    zelcore::debug::DebugDatabase::Instance().Reload();
    EmptyProfile();
    SetFolders({});
    mChangedConnection =
        PluginModuleInfoManager::GetInstance().GetPluginInfosChangedSignal().connect([this] { ++mChangedSignals; });
}

ManagerStage::~ManagerStage() {
    for (const unsigned long timer : mTimers) zelcore::threads::MainLoop::GetInstalled()->StopTimer(timer);
    EmptyProfile();
    zelcore::debug::DebugDatabase::Instance().Reload();
    zelaudiofilterhostui::Terminate();
}

// The profile

PluginLocator ManagerStage::Locate(const std::string& path, TechnologyType technology) {
    return PluginLocator(technology, UTF8to16(path));
}

void ManagerStage::AddPlugin(const std::string& path, const std::string& name, bool enabled, TechnologyType technology,
                             bool isInstrument) {
    PluginComponentInfo component;
    component.componentId = UTF8to16("TEST-" + path);
    component.name = UTF8to16(name);
    component.isInstrument = isInstrument;
    const boost::intrusive_ptr<PluginModuleInfo> info(
        new PluginModuleInfo(Locate(path, technology), UTF8to16(name), PluginFingerprint(), {component}));
    PluginModuleInfoManager::GetInstance().AddPluginInfo(info);
    info->SetEnabled(enabled);
}

void ManagerStage::Ban(const std::string& path, TechnologyType technology) {
    BannedPluginManager::GetInstance().AddBannedPlugin(Locate(path, technology));
}

void ManagerStage::SetFolders(const std::vector<std::string>& folders) {
    std::vector<zelcore::ustring> paths;
    for (const std::string& folder : folders) paths.push_back(UTF8to16(folder));
    for (const TechnologyType type : {kTechnologyVST, kTechnologyVST3, kTechnologyAU}) {
        const auto technology = PluginModuleInfoManager::GetInstance().GetPluginTechnology(type);
        if (technology)
            technology->SetPluginDirectories(type == kTechnologyVST ? paths : std::vector<zelcore::ustring>());
    }
}

std::vector<std::string> ManagerStage::GetFolders() const {
    std::vector<std::string> folders;
    const auto technology = PluginModuleInfoManager::GetInstance().GetPluginTechnology(kTechnologyVST);
    for (auto it = technology->DirectoryBegin(); it != technology->DirectoryEnd(); ++it)
        folders.push_back(ToBytes(*it));
    return folders;
}

void ManagerStage::SaveCatalogue() {
    PluginModuleInfoManager::GetInstance().SaveConfiguration(File(UTF8to16(GetCataloguePath())), true);
}

bool ManagerStage::IsEnabled(const std::string& path) const {
    for (const TechnologyType type : {kTechnologyVST, kTechnologyVST3})
        if (const auto info = PluginModuleInfoManager::GetInstance().FindPluginInfo(Locate(path, type)))
            return info->IsEnabled();
    throw std::logic_error("not in the catalogue: " + path);
}

std::string ManagerStage::TestPlugin(const std::string& name) { return std::string(ZEL_TESTPLUGINS_DIR) + "/" + name; }

std::string ManagerStage::GetCataloguePath() const {
    return GetPath(ToBytes(PluginModuleInfoManager::GetInstance().GetSettingsFileName()));
}

std::string ManagerStage::GetBansPath() const {
    return GetPath(ToBytes(BannedPluginManager::GetInstance().GetSettingsFileName()));
}

std::string ManagerStage::ToBytes(const zelcore::ustring& text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(text);
    return std::string(bytes.data(), bytes.size());
}

// The dialog

void ManagerStage::RunDialog(const std::function<void()>& use) {
    bool wasUsed = false;
    WhenTrue(
        [] { return QApplication::activeModalWidget() != nullptr && QApplication::activeModalWidget()->isVisible(); },
        [this, &wasUsed, use] {
            QWidget* const window = QApplication::activeModalWidget();
            try {
                use();
            } catch (const std::exception& e) {
                ADD_FAILURE() << e.what();
            }
            wasUsed = true;
            if (window->isVisible()) QTest::keyClick(window, Qt::Key_Escape);
            if (window->isVisible()) window->close();
        });
    zelaudiofilterhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, mSettings, nullptr);
    EXPECT_TRUE(wasUsed);
}

QWidget& ManagerStage::GetWindow() const {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->findChild<QWidget*>("PluginList") != nullptr) return *widget;
    throw std::logic_error("the dialog is not open");
}

UI_Node* ManagerStage::FindNode(const std::string& id) const {
    UI_Node* node = zelui::qt::GetNode(GetWindow().findChild<QWidget*>("PluginList"));
    while (node->UI_GetParentNode() != nullptr) node = node->UI_GetParentNode();
    UI_Node* const found = FindBelow(*node, id);
    if (found == nullptr) throw std::logic_error("no node of the id " + id);
    return found;
}

void ManagerStage::ClickNode(const UI_Node& node) const {
    QWidget* const widget = zelui::qt::GetWidget(node);
    if (widget == nullptr) throw std::logic_error("what is to be clicked is not in view");
    // The left end: check boxes are wider than what can be clicked of them.
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(7, widget->height() / 2));
}

void ManagerStage::Click(const std::string& id) const { ClickNode(Find(id)); }

void ManagerStage::Type(const std::string& text) const {
    ProcessUntil([] { return QApplication::focusWidget() != nullptr; });
    // Not by QTest::keyClicks, which knows ASCII alone.
    for (const QChar character : QString::fromStdString(text)) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key(type, Qt::Key_unknown, Qt::NoModifier, QString(character));
            QCoreApplication::sendEvent(QApplication::focusWidget(), &key);
        }
    }
}

void ManagerStage::PressKey(int key, Qt::KeyboardModifiers modifiers) const {
    ProcessUntil([] { return QApplication::focusWidget() != nullptr; });
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
}

std::vector<std::string> ManagerStage::Read(const Tree& tree, int column) {
    const QAbstractItemModel& model = *GetTable(tree).model();
    // What stands on the screen follows the list from the event loop.
    ProcessUntil([&] { return model.rowCount() == static_cast<int>(tree.GetRowCount()); });
    std::vector<std::string> texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.push_back(model.index(row, column).data(Qt::DisplayRole).toString().toStdString());
    return texts;
}

std::size_t ManagerStage::FindRow(const std::string& name) const {
    const std::vector<std::string> names = ReadNames();
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) throw std::logic_error("no row of the name " + name);
    return static_cast<std::size_t>(found - names.begin());
}

UI_Checkbox* ManagerStage::GetEnabledBox(std::size_t row) const {
    GetPlugins().SyncVisibility();
    return GetControl<UI_Checkbox>(GetPlugins().GetRowAt(row)->GetCellView(kEnabledColumn));
}

UI_Button* ManagerStage::GetReloadButton(std::size_t row) const {
    GetPlugins().SyncVisibility();
    return GetControl<UI_Button>(GetPlugins().GetRowAt(row)->GetCellView(kStatusColumn));
}

void ManagerStage::ClickHeader(int column) const {
    QHeaderView& header = *GetTable(GetPlugins()).horizontalHeader();
    const QPoint place(header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void ManagerStage::ProcessUntil(const std::function<bool()>& condition) {
    const bool came = WaitFor(condition, std::chrono::seconds(20), [] { QCoreApplication::processEvents(); });
    if (!came) throw std::logic_error("what was waited for did not come");
}

void ManagerStage::WhenTrue(const std::function<bool()>& condition, const std::function<void()>& action) {
    const std::size_t index = mTimers.size();
    mTimers.push_back(0);
    mTimers[index] = zelcore::threads::MainLoop::GetInstalled()->StartTimer(1, [this, index, condition, action] {
        if (!condition()) return;
        zelcore::threads::MainLoop::GetInstalled()->StopTimer(mTimers[index]);
        mTimers[index] = 0;
        action();
    });
}

QWidget* ManagerStage::FindBox() const {
    QWidget* const top = QApplication::activeModalWidget();
    return top != nullptr && top->isVisible() && top->findChild<QWidget*>("PluginList") == nullptr ? top : nullptr;
}

}  // namespace zeltests
