#include "ScanFixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <sstream>

#include <boost/bind/bind.hpp>
#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/MainLoop.h>
#include <zelcore/Utf.h>
#include <zelui/UI_ProgressDialog.h>

#include "ProcessList.h"
#include "support/Environment.h"

namespace zeltests {

using namespace zelaudiofilterhost;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::utility::UTF8to16;

namespace {

std::vector<std::string> ReadLines(const std::string& path) {
    std::vector<std::string> lines;
    if (!std::filesystem::exists(path)) return lines;
    std::istringstream stream(ReadFile(path));
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace

ScanFixture::ScanFixture() {
    Dir::SetAppDir(mAppFolder.GetDir());
    EmptyCatalogue();
    SetVariable("ZEL_SCRIPT_FOLDER", mScriptFolder.GetPath().c_str());
    mProgressConnection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [this](unsigned long current, unsigned long total, const zelcore::ustring& text) {
            mShown.push_back({current, total, ToBytes(text)});
        });
    mChangedConnection =
        PluginModuleInfoManager::GetInstance().GetPluginInfosChangedSignal().connect([this] { ++mChangedSignals; });
}

ScanFixture::~ScanFixture() {
    for (const unsigned long timer : mTimers) zelcore::threads::MainLoop::GetInstalled()->StopTimer(timer);
    ProcessList::EndScanners();
    EmptyCatalogue();
    Dir::SetAppDir(Dir());
}

void ScanFixture::EmptyCatalogue() {
    const File none(mScriptFolder.GetDir(), UTF8to16("none"));
    PluginModuleInfoManager::GetInstance().LoadConfiguration(none);
    BannedPluginManager::GetInstance().LoadConfiguration(none);
}

void ScanFixture::UseRealScanner() { Dir::SetAppDir(Dir(UTF8to16(ZEL_BIN_DIR))); }

void ScanFixture::UseScriptedScanner(const std::vector<std::string>& scripts) {
    for (std::size_t i = 0; i < scripts.size(); ++i)
        WriteFile(mScriptFolder.Path("script" + (i + 1 < scripts.size() ? "." + std::to_string(i + 1) : "")),
                  scripts[i]);
    Dir::SetAppDir(Dir(UTF8to16(ZEL_SCRIPTED_DIR)));
}

std::vector<std::string> ScanFixture::GetRequests() const { return ReadLines(mScriptFolder.Path("log")); }

std::size_t ScanFixture::CountLaunches() const { return ReadLines(mScriptFolder.Path("launches")).size(); }

void ScanFixture::RemoveScanner() { Dir::SetAppDir(mAppFolder.GetDir()); }

void ScanFixture::Release(const std::string& name) const { WriteFile(mScriptFolder.Path(name), ""); }

QDialog* ScanFixture::FindDialog() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->findChild<QPushButton*>("CancelButton"))
            return qobject_cast<QDialog*>(widget);
    return nullptr;
}

void ScanFixture::ClickCancel() {
    QDialog* const dialog = FindDialog();
    ASSERT_TRUE(dialog);
    QTest::mouseClick(dialog->findChild<QPushButton*>("CancelButton"), Qt::LeftButton);
}

void ScanFixture::WhenTrue(const std::function<bool()>& condition, const std::function<void()>& action) {
    const std::size_t index = mTimers.size();
    mTimers.push_back(0);
    mTimers[index] = zelcore::threads::MainLoop::GetInstalled()->StartTimer(1, [this, index, condition, action] {
        if (!condition()) return;
        zelcore::threads::MainLoop::GetInstalled()->StopTimer(mTimers[index]);
        mTimers[index] = 0;
        action();
    });
}

std::string ScanFixture::GetCataloguePath() const {
    return GetPath(ToBytes(PluginModuleInfoManager::GetInstance().GetSettingsFileName()));
}

std::string ScanFixture::GetBansPath() const {
    return GetPath(ToBytes(BannedPluginManager::GetInstance().GetSettingsFileName()));
}

bool ScanFixture::Exists(const std::string& path) { return std::filesystem::exists(path); }

PluginLocator ScanFixture::Vst(const std::string& path) { return PluginLocator(kTechnologyVST, UTF8to16(path)); }

PluginLocator ScanFixture::Vst3(const std::string& path) { return PluginLocator(kTechnologyVST3, UTF8to16(path)); }

std::string ScanFixture::TestPlugin(const std::string& name) { return std::string(ZEL_TESTPLUGINS_DIR) + "/" + name; }

std::string ScanFixture::ToBytes(const zelcore::ustring& text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(text);
    return std::string(bytes.data(), bytes.size());
}

std::string ScanFixture::ToString(const PluginLocator& locator) { return ToBytes(locator.ToString()); }

std::vector<std::string> ScanFixture::GetCatalogued() {
    std::vector<std::string> paths;
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto it = catalogue.PluginInfoBegin(); it != catalogue.PluginInfoEnd(); ++it)
        paths.push_back(ToBytes((*it)->GetLocator().GetPath()));
    return paths;
}

std::vector<std::string> ScanFixture::GetBanned() {
    std::vector<std::string> paths;
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    for (auto it = bans.BannedBegin(); it != bans.BannedEnd(); ++it) paths.push_back(ToBytes(it->GetPath()));
    return paths;
}

std::vector<std::string> ScanFixture::GetCataloguedInFile() {
    EXPECT_EQ(PluginModuleInfoManager::kLoaded,
              PluginModuleInfoManager::GetInstance().LoadConfiguration(File(UTF8to16(GetCataloguePath()))));
    return GetCatalogued();
}

std::vector<std::string> ScanFixture::GetBannedInFile() {
    EXPECT_TRUE(BannedPluginManager::GetInstance().LoadConfiguration(File(UTF8to16(GetBansPath()))));
    return GetBanned();
}

}  // namespace zeltests
