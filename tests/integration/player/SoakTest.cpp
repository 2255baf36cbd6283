#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <thread>

#include <gtest/gtest.h>

#include "LiveChain.h"
#include "PlayerStage.h"
#include "ResidentMemory.h"
#include "support/InstalledPlugins.h"
#include "support/PluginLeaks.h"
#include "support/ThrowAwayFolder.h"
#include "support/WaitFor.h"

using namespace tessaly;

namespace zeltests {

namespace {

constexpr std::size_t kRate = 48000;
constexpr std::size_t kMegabyte = 1 << 20;

/// Seconds of sound: 300, or what ZEL_SOAK_SECONDS says, for a longer look. Everything is slower under a sanitizer.
std::size_t GetSeconds() {
    if (const char* const given = std::getenv("ZEL_SOAK_SECONDS")) return std::strtoul(given, nullptr, 10);
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return 20;
#else
    return 300;
#endif
}

std::vector<std::string> FindModules() {
    std::vector<std::string> found;
    for (const char* const name : {"/ZamComp.vst3", "/ZamEQ2-vst.so", "/ZamDelay.vst3", "/ZamGEQ31-vst.so"}) {
        for (const std::string& path : FindInstalledPlugins()) {
            if (path.ends_with(name) && found.size() < 4) found.push_back(path);
        }
    }
    return found;
}

void MoveParameters(zelaudiofilterhost::AudioFilter& filter, double phase) {
    for (int i = 0; i < filter.GetParameterCount(); ++i)
        filter.SetParameterValue(i, static_cast<float>(0.5 + 0.4 * std::sin(phase + i)));
}

}  // namespace

TEST(SoakTest, FourEffectsWhoseParametersMoveLoseNoBlockAndTakeNoMemory) {
    const IgnorePluginLeaks ignore;
    const std::vector<std::string> modules = FindModules();
    if (modules.size() < 4) GTEST_SKIP() << "the effects that this takes are not installed (zam-plugins)";
    const ThrowAwayFolder folder;
    WriteSound(folder.Path("in.wav"), MakeTestSound(2, 40 * kRate + 17));
    FileFeeder feeder(folder.Path("in.wav"), "", 0);
    SoundEngine engine(feeder);
    engine.SetLooping(true);
    LiveChain chain(engine, kRate, zelmediatypes::MakeChannelLayoutForCount(2), {});
    LiveChain::Effects effects;
    for (const std::string& module : modules) effects.push_back(MakeEffect(module));
    ASSERT_TRUE(chain.SetEffects(effects).empty());
    WaitForSound(feeder);

    const std::size_t seconds = GetSeconds();
    std::atomic<std::size_t> pulled = 0;
    std::atomic<bool> isHeard = false;
    std::thread sound([&] {
        for (; pulled < seconds; ++pulled) {
            const Sound heard = Pull(engine, kRate);
            for (const float sample : heard[0]) isHeard = isHeard || std::fabs(sample) > 0.01f;
        }
    });
    std::size_t early = 0;
    double phase = 0.0;
    ASSERT_TRUE(WaitFor([&] { return pulled >= seconds; }, std::chrono::hours(2),
                        [&] {
                            for (const ChainEffectPtr& effect : effects) MoveParameters(*effect->GetFilter(), phase);
                            phase += 0.01;
                            chain.Collect();
                            if (early == 0 && pulled >= seconds / 5) early = GetResidentMemory();
                        }));
    sound.join();
    const std::size_t late = GetResidentMemory();
    EXPECT_EQ(engine.GetLostCount(), 0u);
    EXPECT_GE(engine.GetBlockCount(), seconds * kRate / SoundEngine::kBlockFrames);
    EXPECT_TRUE(isHeard);
    EXPECT_LT(late, early + 2 * kMegabyte);
    std::cout << engine.GetBlockCount() << " blocks, " << engine.GetLostCount() << " lost, " << early / 1024
              << " kB, then " << late / 1024 << " kB\n";
}

}  // namespace zeltests
