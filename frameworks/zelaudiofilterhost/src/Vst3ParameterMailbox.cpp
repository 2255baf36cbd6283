#include "Vst3ParameterMailbox.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace zelaudiofilterhost {

void Vst3ParameterMailbox::Reserve(std::size_t count) {
    count = std::min(count, kMaxParameters);
    if (count <= mSlots.size()) return;
    // The index first: if the slots find no memory, it is only larger than it had to be.
    std::vector<Slot*> index(std::bit_ceil(2 * count), nullptr);
    mIndex.swap(index);
    for (std::size_t i = 0; i < mUsed; ++i) Index(mSlots[i]);
    while (mSlots.size() < count) mSlots.emplace_back();
}

bool Vst3ParameterMailbox::Put(Id id, double value) {
    if (mIndex.empty()) return false;
    Slot*& entry = mIndex[Locate(id)];
    if (entry == nullptr) {
        if (mUsed == mSlots.size()) return false;
        entry = &mSlots[mUsed++];
        entry->id = id;
    }
    Slot& slot = *entry;
    slot.value.store(value, std::memory_order_relaxed);
    if (slot.isWaiting.exchange(true, std::memory_order_acq_rel)) return true;
    slot.next = mNewest.load(std::memory_order_relaxed);
    while (!mNewest.compare_exchange_weak(slot.next, &slot, std::memory_order_release, std::memory_order_relaxed)) {
    }
    return true;
}

bool Vst3ParameterMailbox::IsWaiting(Id id) const {
    if (mIndex.empty()) return false;
    const Slot* const slot = mIndex[Locate(id)];
    return slot != nullptr && slot->isWaiting.load(std::memory_order_acquire);
}

std::size_t Vst3ParameterMailbox::Locate(Id id) const {
    // Ids are small numbers in a row with one plug-in and hashes of names with the next.
    constexpr std::uint32_t kScatter = 0x9E3779B1;
    const std::size_t mask = mIndex.size() - 1;
    std::uint32_t hash = static_cast<std::uint32_t>(id) * kScatter;
    hash ^= hash >> 15;
    std::size_t position = hash & mask;
    while (mIndex[position] != nullptr && mIndex[position]->id != id) position = (position + 1) & mask;
    return position;
}

Vst3ParameterMailbox::Slot* Vst3ParameterMailbox::TakeList() {
    Slot* newest = mNewest.exchange(nullptr, std::memory_order_acquire);
    Slot* oldest = nullptr;
    while (newest != nullptr) {
        Slot* const before = newest->next;
        newest->next = oldest;
        oldest = newest;
        newest = before;
    }
    return oldest;
}

}  // namespace zelaudiofilterhost
