#pragma once

#include <chrono>
#include <cstdlib>
#include <vector>

#include <zelcore/MainLoop.h>

#include "ScanFixture.h"

namespace zeltests {

/// Scans that are stopped, and whose objects go, at any moment of the conversation.
class ScanLifetimeTest : public ScanFixture {
protected:
    std::vector<zelaudiofilterhost::PluginLocator> GetPlugins() const {
        return {Vst(TestPlugin("vst/good/zel_gain" ZEL_MODULE)),
                Vst(TestPlugin("vst/bad/crash_when_described" ZEL_MODULE)), Vst3(TestPlugin("vst3/good/ZelGain3.vst3")),
                Vst(TestPlugin("vst/good/zel_synth" ZEL_MODULE))};
    }

    /// Runs the main loop for so many microseconds.
    static void RunLoopFor(long microseconds) {
        auto* const loop = zelcore::threads::MainLoop::GetInstalled();
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds);
        const auto timer = loop->StartTimer(1, [loop, end] {
            if (std::chrono::steady_clock::now() >= end) loop->Quit();
        });
        loop->Run();
        loop->StopTimer(timer);
    }

    static int GetRounds() {
        const char* const rounds = std::getenv("ZEL_LIFETIME_ROUNDS");
        return rounds ? std::atoi(rounds) : 40;
    }
};

}  // namespace zeltests
