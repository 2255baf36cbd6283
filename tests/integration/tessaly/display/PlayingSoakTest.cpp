#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <thread>

#include <gtest/gtest.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelcore/Utf.h>

#include "../../player/ResidentMemory.h"
#include "../../render/Sound.h"
#include "ChainView.h"
#include "MainWindow.h"
#include "support/InstalledPlugins.h"
#include "support/SoundServer.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

using tessaly::MainWindow;
using zelaudiofilterhost::AudioFilterDescriptor;

namespace {

constexpr std::size_t kMegabyte = 1 << 20;

/// Seconds of playing: 15, or what ZEL_SOAK_SECONDS says, for a longer look.
int GetSeconds() {
    const char* const given = std::getenv("ZEL_SOAK_SECONDS");
    return given != nullptr ? std::atoi(given) : 15;
}

std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> FindEffects() {
    std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> found;
    for (const char* const name : {"/ZamComp.vst3", "/ZamEQ2-vst.so", "/ZamDelay.vst3", "/ZamGEQ31-vst.so"}) {
        for (const std::string& path : FindInstalledPlugins()) {
            if (!path.ends_with(name)) continue;
            const bool vst3 = path.ends_with(".vst3");
            found.push_back(AudioFilterDescriptor::ReadModule(
                                {vst3 ? zelaudiofilterhost::kTechnologyVST3 : zelaudiofilterhost::kTechnologyVST,
                                 zelcore::utility::UTF8to16(path)})
                                .at(0));
        }
    }
    return found;
}

/// Runs the main loop for as long as somebody looks at an editor.
void Show() {
    QEventLoop loop;
    QTimer::singleShot(300, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace

/// The whole application, playing on a device in real time.
TEST(PlayingSoakTest, EditorsThatOpenAndCloseLoseNoBlockAndMemoryDoesNotGrow) {
    SoundServer server;
    if (!server.IsThere()) GTEST_SKIP() << "PulseAudio does not start here";
    server.AddDevice("soak");
    const auto effects = FindEffects();
    if (effects.size() < 4) GTEST_SKIP() << "the effects that this takes are not installed (zam-plugins)";
    const ThrowAwayPreferences preferences;
    const ThrowAwayFolder folder;
    WriteSound(folder.Path("sound.wav"), MakeTestSound(2, 7 * 48000));
    MainWindow window(tessaly::CommandLine::kLight);
    window.show();
    ASSERT_TRUE(window.GetFiles().OpenSound(folder.Path("sound.wav")));
    for (const auto& effect : effects) window.AddEffect(*effect);
    window.ToggleLoop();
    window.GetPlayer().Play();
    ASSERT_TRUE(window.GetPlayer().IsPlaying());

    const int seconds = GetSeconds();
    int openings = 0;
    std::size_t early = 0;
    QElapsedTimer time;
    for (time.start(); time.elapsed() < seconds * 1000;) {
        window.GetChainView().SetCurrentIndex(openings % 4);
        window.OpenEditor(static_cast<tessaly::EditorKind>(openings / 4 % 3));
        Show();
        window.GetEffectWindows().CloseAll();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ++openings;
        // What is loaded once is there by then.
        if (early == 0 && (openings == 24 || time.elapsed() > seconds * 500)) early = GetResidentMemory();
    }
    EXPECT_TRUE(window.GetPlayer().IsPlaying());
    const tessaly::Player::Counts counts = window.GetPlayer().GetCounts();
    const std::size_t late = GetResidentMemory();
    std::cout << counts.blocks << " blocks, " << counts.lost << " lost, " << openings << " editors opened, "
              << early / kMegabyte << " MB early, " << late / kMegabyte << " MB late\n";
    EXPECT_EQ(counts.lost, 0u);
    EXPECT_GT(counts.blocks, static_cast<std::uint64_t>(seconds) * 48000 / 512 * 8 / 10);
#if !defined(__SANITIZE_ADDRESS__)  // which keeps what is freed
    EXPECT_LT(late, early + 16 * kMegabyte);
#endif
    window.GetPlayer().Stop();
    window.GetSession().Clear();
}

}  // namespace zeltests
