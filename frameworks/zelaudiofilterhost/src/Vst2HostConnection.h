#pragma once

#include "Vst2Abi.h"

namespace zelaudiofilterhost {

class Vst2HostClient;

/// While it lives, the host's callback finds `client` by the effect's address. The address alone is looked at, never
/// what is there: plug-ins pass effects that are closed already, copies, and what was never one. Made and ended on the
/// main thread; the end waits until nobody uses the client any more, so it must not come from within such a use.
class Vst2HostConnection {
public:
    Vst2HostConnection(const vst2::Effect& effect, Vst2HostClient& client);
    ~Vst2HostConnection();
    Vst2HostConnection(const Vst2HostConnection&) = delete;
    Vst2HostConnection& operator=(const Vst2HostConnection&) = delete;

private:
    struct Slot;

public:
    /// The client of an effect, which stays there while this lives; null for an effect that has none. Any thread; takes
    /// no locks and allocates nothing.
    class Use {
    public:
        explicit Use(const vst2::Effect* effect) noexcept;
        ~Use();
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

        explicit operator bool() const noexcept { return mSlot != nullptr; }
        Vst2HostClient* operator->() const noexcept;

    private:
        Slot* mSlot;
    };

private:
    static Slot& TakeSlot();

    Slot& mSlot;
};

}  // namespace zelaudiofilterhost
