#include "BlockGate.h"

#include <thread>
#include <utility>

namespace zelaudiofilterhost {

bool BlockGate::TryChange(State to) noexcept {
    State from = State::kFree;
    return mState.compare_exchange_strong(from, to, std::memory_order_acquire, std::memory_order_relaxed);
}

BlockGate::Block::Block(BlockGate& gate) noexcept : mGate(gate), mIsInside(gate.TryChange(State::kInBlock)) {}

BlockGate::Block::~Block() {
    if (mIsInside) mGate.mState.store(State::kFree, std::memory_order_release);
}

BlockGate::Closed::Closed(BlockGate& gate) : mGate(gate), mIsFirst(!std::exchange(gate.mIsClosed, true)) {
    while (mIsFirst && !mGate.TryChange(State::kClosed)) std::this_thread::yield();
}

BlockGate::Closed::~Closed() {
    if (!mIsFirst) return;
    mGate.mIsClosed = false;
    mGate.mState.store(State::kFree, std::memory_order_release);
}

}  // namespace zelaudiofilterhost
