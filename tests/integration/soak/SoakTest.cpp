#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include <gtest/gtest.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QPixmapCache>
#include <QScrollArea>
#include <QTest>

#include <zelaudiofilterhostui/AudioFilterChannelMapEditorView.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/MessageBox.h>
#include <zelui/OS_FolderChooserDialog.h>
#include <zelui/QtBridge.h>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_ProgressDialog.h>

#include "../views/ViewStage.h"
#include "ChainView.h"
#include "EditorWindow.h"
#include "Footprint.h"
#include "WindowStage.h"

namespace zeltests {

using zelaudiofilterhostui::AudioFilterChannelMapEditorView;
using zelaudiofilterhostui::AudioPluginManager;
using zelaudiofilterhostui::GenericAudioFilterEditorView;
using zelcore::utility::AsciiToUTF16;
using zelui::drawbot::SupplierInterface;

namespace {

typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> FilterPtr;

constexpr std::size_t kFewOpenings = 30;
/// What is made once and kept (fonts, styles, pictures of controls) is there after so many.
constexpr std::size_t kWarmUp = 25;
constexpr std::size_t kMostPerOpening = 1024;
/// The heap's own ups and downs, which over few openings would look like growth.
constexpr std::size_t kHeapNoise = 128 * 1024;
constexpr std::size_t kResidentNoise = 2 * 1024 * 1024;

std::size_t GetOpenings() {
    const char* const given = std::getenv("ZEL_SOAK_OPENINGS");
    return given ? std::max<std::size_t>(std::strtoul(given, nullptr, 10), 1) : kFewOpenings;
}

double GrowthOf(std::size_t before, std::size_t after, std::size_t openings) {
    return (static_cast<double>(after) - static_cast<double>(before)) / static_cast<double>(openings);
}

long Difference(std::size_t before, std::size_t after) { return static_cast<long>(after) - static_cast<long>(before); }

FilterPtr LoadFilter(zelaudiofilterhost::TechnologyType technology, const char* path) {
    return ViewStage::LoadFilter(technology, std::string(ZEL_TESTPLUGINS_DIR) + path);
}

/// A view in a window of its own, and gone again.
void ShowInWindow(const boost::intrusive_ptr<zelui::ui::UI_SubView>& view) {
    QScrollArea window;
    window.setWidget(new zelui::qt::NodeWidget(view));
    window.resize(480, 600);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
}

}  // namespace

/// Opens and closes one thing over and over; what there is of memory, descriptors, windows and threads afterwards is
/// what there was after the first few times.
class SoakTest : public WindowStage {
protected:
    SoakTest() {
        // Qt keeps pictures of what it has drawn, up to ten megabytes of them, which would look like growth all the
        // way.
        QPixmapCache::setCacheLimit(0);
    }

    void Soak(const char* name, const std::function<void()>& openAndClose) {
        const std::size_t openings = GetOpenings();
        for (std::size_t i = 0; i < kWarmUp; ++i) OpenAndClose(openAndClose);
        const Footprint before = Footprint::Take();
        QElapsedTimer time;
        time.start();
        for (std::size_t i = 0; i < openings; ++i) OpenAndClose(openAndClose);
        const double milliseconds = static_cast<double>(time.elapsed()) / static_cast<double>(openings);
        // The window system takes windows down when it comes to it.
        WhenTrue([&] { return CountWindowsNow() <= before.windows; });
        const Footprint after = Footprint::Take();
        std::printf(
            "soak %-36s %6zu openings %8.1f ms each %9.1f B heap %9.1f B resident %3ld files %3ld windows %3ld "
            "threads\n",
            name, openings, milliseconds, GrowthOf(before.allocated, after.allocated, openings),
            GrowthOf(before.resident, after.resident, openings), Difference(before.descriptors, after.descriptors),
            Difference(before.windows, after.windows), Difference(before.threads, after.threads));
        std::fflush(stdout);
        Compare(before, after, openings);
    }

    static void CancelDialog(QWidget&) { EXPECT_TRUE(zelui::Application::CancelActiveDialog()); }
    void AddEditorToCatalogue() {
        AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_editor.so");
        const auto filter = LoadFilter(zelaudiofilterhost::kTechnologyVST, "/vst/good/zel_editor.so");
        AddEffect(zelui::qt::ToQString(filter->GetName()).toStdString());
    }
    void SoakEditorWindow(const char* name, tessaly::EditorKind kind) {
        AddEditorToCatalogue();
        mWindow->GetChainView().SetCurrentIndex(0);
        const tessaly::ChainEffectPtr effect = mWindow->GetSession().GetEffects()[0];
        Soak(name, [&] {
            mWindow->OpenEditor(kind);
            tessaly::EditorWindow* const window = mWindow->GetEffectWindows().Find(effect, kind);
            ASSERT_NE(window, nullptr);
            EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
            mWindow->GetEffectWindows().CloseAll();
        });
    }

private:
    static void OpenAndClose(const std::function<void()>& openAndClose) {
        openAndClose();
        // Outside a loop of its own Qt keeps these for later.
        for (int turn = 0; turn < 3; ++turn) {
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QApplication::processEvents();
        }
    }
    static std::size_t CountWindowsNow() { return Footprint::Take().windows; }
    static void Compare(const Footprint& before, const Footprint& after, [[maybe_unused]] std::size_t openings) {
        EXPECT_LE(after.descriptors, before.descriptors);
        EXPECT_LE(after.windows, before.windows);
        EXPECT_LE(after.threads, before.threads);
#if !defined(__SANITIZE_ADDRESS__)  // which keeps what is freed
        EXPECT_LT(after.allocated, before.allocated + openings * kMostPerOpening + kHeapNoise);
        EXPECT_LT(after.resident, before.resident + openings * kMostPerOpening + kResidentNoise);
#endif
    }
};

/// What the toolkit below and the window system's library keep of any window.
TEST_F(SoakTest, BareWindow) {
    Soak("a bare window of Qt, for comparison", [] {
        QWidget window;
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    });
}

TEST_F(SoakTest, NativeEditorViewOfVst2) {
    const FilterPtr filter = LoadFilter(zelaudiofilterhost::kTechnologyVST, "/vst/good/zel_editor.so");
    ViewStage stage;
    Soak("native editor view, VST", [&] {
        stage.Show(filter);
        EXPECT_TRUE(stage.Open());
        stage.Clear();
    });
}

TEST_F(SoakTest, NativeEditorViewOfVst3) {
    const FilterPtr filter = LoadFilter(zelaudiofilterhost::kTechnologyVST3, "/vst3/good/ZelEditor3.vst3");
    ViewStage stage;
    Soak("native editor view, VST3", [&] {
        stage.Show(filter);
        EXPECT_TRUE(stage.Open());
        stage.Clear();
    });
}

TEST_F(SoakTest, GenericEditorView) {
    const FilterPtr filter = LoadFilter(zelaudiofilterhost::kTechnologyVST, "/vst/good/zel_many.so");
    Soak("generic editor view, 2000 parameters", [&] { ShowInWindow(GenericAudioFilterEditorView::Create(filter)); });
}

TEST_F(SoakTest, ChannelMapView) {
    AddEffect("Zel Side Chain");
    const FilterPtr filter = mWindow->GetSession().GetEffects()[0]->GetFilter();
    Soak("channel map view",
         [&] { ShowInWindow(AudioFilterChannelMapEditorView::Create(filter, SupplierInterface::GetDefault())); });
}

TEST_F(SoakTest, PluginManagerDialog) {
    zelaudiofilterhostui::AudioPluginManagerSettings settings;
    Soak("plug-in manager dialog", [&] {
        WithDialog([&] { AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr); },
                   &CancelDialog);
    });
}

TEST_F(SoakTest, ProgressDialog) {
    Soak("progress dialog", [] {
        const boost::intrusive_ptr<zelui::dialogs::UI_ProgressDialog> dialog(new zelui::dialogs::UI_ProgressDialog(
            nullptr, AsciiToUTF16("Scanning"), zelcore::ustring(), nullptr, false, true));
        dialog->UI_ShowModeless();
        dialog->SetExtraText(AsciiToUTF16("/usr/lib/vst/plug-in.so"));
        dialog->SetProgress(3, 7, zelcore::ustring());
        dialog->UI_IdleUpdate();
        dialog->UI_Close(zelui::ui::UI_DialogViewContainer::kResponseOK);
    });
}

TEST_F(SoakTest, MessageBox) {
    Soak("message box", [] {
        WithDialog(
            [] {
                zelui::dialogs::messagebox::ShowCaution(nullptr, AsciiToUTF16("Title"), AsciiToUTF16("A message"),
                                                        nullptr);
            },
            &CancelDialog);
    });
}

TEST_F(SoakTest, FolderChooser) {
    Soak("folder chooser", [] {
        zelui::dialogs::OS_FolderChooserDialog chooser(nullptr,
                                                       zelui::dialogs::OS_FolderChooserDialog::kMayMakeFolders);
        WithDialog([&] { chooser.RunModal(); }, &CancelDialog);
    });
}

TEST_F(SoakTest, MainWindow) {
    Soak("main window", [this] { OpenWindow(); });
}

TEST_F(SoakTest, EffectMenu) {
    Soak("effect menu", [this] {
        mWindow->AddEffect();
        // Not for the window system: a window that is hidden and shown again at once may be told of in the wrong order.
        QWidget* const menu = Find("EffectMenu");
        EXPECT_TRUE(menu->isVisible());
        QApplication::processEvents();
        menu->hide();
    });
}

TEST_F(SoakTest, WindowOfAnEditor) { SoakEditorWindow("window of an editor", tessaly::kOwnEditor); }

TEST_F(SoakTest, WindowOfAGenericEditor) { SoakEditorWindow("window of a generic editor", tessaly::kGenericEditor); }

TEST_F(SoakTest, WindowOfAChannelMap) { SoakEditorWindow("window of a channel map", tessaly::kChannelMapEditor); }

TEST_F(SoakTest, RenderDialog) {
    mWindow->GetFiles().OpenSound(GetSound());
    Soak("render dialog", [this] { mWindow->Render(mFolder.Path("rendered.wav")); });
}

}  // namespace zeltests
