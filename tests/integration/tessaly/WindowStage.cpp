#include "WindowStage.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "../render/Sound.h"
#include "support/WaitFor.h"

namespace zeltests {

using tessaly::MainWindow;
using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelaudiofilterhost::PluginComponentInfo;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhost::PluginModuleInfo;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelui::qt::ToQString;

namespace {

constexpr std::size_t kFrames = 48000;

void EmptyCatalogue(const ThrowAwayFolder& folder) {
    PluginModuleInfoManager::GetInstance().LoadConfiguration(
        zelcore::filesupport::File(folder.GetDir(), zelcore::utility::UTF8to16("no such catalogue")));
}

}  // namespace

WindowStage::WindowStage() {
    EmptyCatalogue(mFolder);
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_gain" ZEL_MODULE);
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_sidechain" ZEL_MODULE);
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_synth" ZEL_MODULE);
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST3, "vst3/good/ZelGain3.vst3");
    WriteSound(GetSound(), MakeTestSound(2, kFrames));
    WriteSound(GetSideChain(), MakeTestSound(1, kFrames));
    OpenWindow();
}

WindowStage::~WindowStage() {
    mWindow.reset();
    EmptyCatalogue(mFolder);
}

void WindowStage::OpenWindow() {
    mWindow.reset();
    mWindow = std::make_unique<MainWindow>(tessaly::CommandLine::kLight);
    mWindow->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(mWindow.get()));
}

void WindowStage::AddToCatalogue(int technology, const std::string& path) {
    const PluginLocator locator(static_cast<zelaudiofilterhost::TechnologyType>(technology),
                                zelcore::utility::UTF8to16(ZEL_TESTPLUGINS_DIR "/" + path));
    std::vector<PluginComponentInfo> components;
    for (const auto& descriptor : AudioFilterDescriptor::ReadModule(locator))
        components.push_back(descriptor->GetComponent());
    PluginModuleInfoManager::GetInstance().AddPluginInfo(boost::intrusive_ptr<PluginModuleInfo>(
        new PluginModuleInfo(locator, zelcore::ustring(), zelaudiofilterhost::PluginFingerprint(), components)));
}

void WindowStage::AddEffect(const std::string& name) {
    for (const auto& descriptor : AudioFilterDescriptorManager::GetInstance().GetComponentDescriptors()) {
        if (descriptor->GetComponent().name == zelcore::utility::UTF8to16(name)) return mWindow->AddEffect(*descriptor);
    }
    FAIL() << "the catalogue has no " << name;
}

std::vector<std::string> WindowStage::GetChain() {
    std::vector<std::string> names;
    for (const auto& effect : mWindow->GetSession().GetEffects())
        names.push_back(ToQString(effect->GetName()).toStdString());
    return names;
}

void WindowStage::Click(const char* objectName) {
    QAbstractButton* const button = Find<QAbstractButton>(objectName);
    ASSERT_NE(button, nullptr) << objectName;
    ASSERT_TRUE(button->isEnabled() && button->isVisible()) << objectName;
    QTest::mouseClick(button, Qt::LeftButton);
}

void WindowStage::Trigger(const char* action) {
    QAction* const found = Find<QAction>(action);
    ASSERT_NE(found, nullptr) << action;
    ASSERT_TRUE(found->isEnabled()) << action;
    found->trigger();
}

std::string WindowStage::GetNotice() {
    const QLabel* const text = Find<QLabel>("NoticeText");
    return text->isVisible() ? text->text().toStdString() : std::string();
}

void WindowStage::WithDialog(const std::function<void()>& action, const std::function<void(QWidget&)>& answer) {
    bool answered = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || !dialog->isVisible() || std::exchange(answered, true)) return;
        answer(*dialog);
    });
    timer.start(1);
    action();
    EXPECT_TRUE(answered) << "no dialog came";
}

bool WindowStage::WhenTrue(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [] {
        QApplication::processEvents();
        // Outside a loop of its own Qt keeps these for later.
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

}  // namespace zeltests
