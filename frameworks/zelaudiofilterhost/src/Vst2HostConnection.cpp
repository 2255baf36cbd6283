#include "Vst2HostConnection.h"

#include <atomic>
#include <thread>

namespace zelaudiofilterhost {

/// One place for a connection. Places are used again and never deleted, so that a look at one is safe at any time.
///
/// A user counts itself in and then looks whether the effect is still the one it wants; who empties the place takes the
/// effect out and then waits for the count. With sequentially consistent operations one of the two sees the other.
struct Vst2HostConnection::Slot {
    std::atomic<const vst2::Effect*> effect{nullptr};
    std::atomic<int> users{0};
    Vst2HostClient* client = nullptr;  ///< changes only while `effect` is null and nobody is counted in
    bool isTaken = false;              ///< main thread
    Slot* next = nullptr;              ///< never changes once it can be found

    static std::atomic<Slot*> first;
};

std::atomic<Vst2HostConnection::Slot*> Vst2HostConnection::Slot::first{nullptr};

Vst2HostConnection::Slot& Vst2HostConnection::TakeSlot() {
    Slot* slot = Slot::first;
    while (slot != nullptr && slot->isTaken) slot = slot->next;
    if (slot == nullptr) {
        slot = new Slot;
        slot->next = Slot::first;
        Slot::first = slot;
    }
    slot->isTaken = true;
    return *slot;
}

Vst2HostConnection::Vst2HostConnection(const vst2::Effect& effect, Vst2HostClient& client) : mSlot(TakeSlot()) {
    mSlot.client = &client;
    mSlot.effect = &effect;
}

Vst2HostConnection::~Vst2HostConnection() {
    mSlot.effect = nullptr;
    while (mSlot.users != 0) std::this_thread::yield();
    mSlot.client = nullptr;
    mSlot.isTaken = false;
}

Vst2HostConnection::Use::Use(const vst2::Effect* effect) noexcept : mSlot(nullptr) {
    if (effect == nullptr) return;
    for (Slot* slot = Slot::first; slot != nullptr; slot = slot->next) {
        if (slot->effect != effect) continue;
        ++slot->users;
        if (slot->effect == effect) {
            mSlot = slot;
            return;
        }
        --slot->users;
    }
}

Vst2HostConnection::Use::~Use() {
    if (mSlot != nullptr) --mSlot->users;
}

Vst2HostClient* Vst2HostConnection::Use::operator->() const noexcept { return mSlot->client; }

}  // namespace zelaudiofilterhost
