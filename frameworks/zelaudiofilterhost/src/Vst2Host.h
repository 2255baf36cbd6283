#pragma once

#include <cstdint>

#include "Vst2Abi.h"

namespace zelaudiofilterhost {

/// The host as VST2 plug-ins see it: the callback that every module gets. It answers from any thread, at any time
/// (before a plug-in has an effect, after it is closed) and whatever is passed in.
///
/// What it answers is true of a host that has stopped transport and nothing connected. Where the answer depends on how
/// the effect is run, its Vst2HostClient gives it; the constants below stand for one that has none (yet).
class Vst2Host {
public:
    static constexpr double kSampleRate = 48000.0;
    static constexpr std::int32_t kBlockSize = 512;

    static std::intptr_t Callback(vst2::Effect* effect, std::int32_t operation, std::int32_t index, std::intptr_t value,
                                  void* pointer, float number) noexcept;

    /// While it lives, modules that ask which component of a shell is wanted are told this id. Main thread; not nested.
    class WantedComponent {
    public:
        explicit WantedComponent(std::int32_t id);
        ~WantedComponent();
        WantedComponent(const WantedComponent&) = delete;
        WantedComponent& operator=(const WantedComponent&) = delete;
    };
};

}  // namespace zelaudiofilterhost
