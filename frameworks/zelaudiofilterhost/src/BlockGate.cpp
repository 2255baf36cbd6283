#include "BlockGate.h"

#include <thread>
#include <utility>

namespace zelaudiofilterhost {

bool BlockGate::TryEnter() noexcept {
    unsigned from = 0;
    if (!mState.compare_exchange_strong(from, kInBlock, std::memory_order_acquire, std::memory_order_relaxed))
        return false;
    mBlockThread.store(std::this_thread::get_id(), std::memory_order_relaxed);
    return true;
}

BlockGate::Block::Block(BlockGate& gate) noexcept : mGate(gate), mIsInside(gate.TryEnter()) {}

BlockGate::Block::~Block() {
    if (!mIsInside) return;
    mGate.mBlockThread.store(std::thread::id(), std::memory_order_relaxed);
    mGate.mState.fetch_and(~unsigned(kInBlock), std::memory_order_release);
}

bool BlockGate::TryClose() {
    // The end of a block that the same thread is in would never come.
    if (mBlockThread.load(std::memory_order_relaxed) == std::this_thread::get_id()) return false;
    if (std::exchange(mIsClosed, true)) return false;
    // Closed before the block is waited for: of blocks that follow each other without a gap none ends too early.
    mState.fetch_or(kClosed, std::memory_order_acquire);
    while ((mState.load(std::memory_order_acquire) & kInBlock) != 0) std::this_thread::yield();
    return true;
}

BlockGate::Closed::Closed(BlockGate& gate) : mGate(gate), mIsFirst(gate.TryClose()) {}

BlockGate::Closed::~Closed() {
    if (!mIsFirst) return;
    mGate.mIsClosed = false;
    mGate.mState.fetch_and(~unsigned(kClosed), std::memory_order_release);
}

}  // namespace zelaudiofilterhost
