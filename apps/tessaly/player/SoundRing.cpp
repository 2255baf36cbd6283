#include "SoundRing.h"

#include <algorithm>

namespace tessaly {

SoundRing::SoundRing(std::size_t channelCount, std::size_t capacity)
    : mCapacity(capacity), mWritten(0), mRead(0), mHasEnded(false) {
    // Memory that is not written to costs nothing yet: a ring that is soon replaced is hardly filled.
    for (std::size_t i = 0; i < channelCount; ++i)
        mChannels.push_back(std::make_unique_for_overwrite<float[]>(mCapacity));
}

std::size_t SoundRing::GetRoom() const {
    const std::uint64_t read = mRead.load(std::memory_order_acquire);
    return mCapacity - static_cast<std::size_t>(mWritten.load(std::memory_order_relaxed) - read);
}

void SoundRing::Write(const float* const* channels, std::size_t frames) {
    const std::uint64_t written = mWritten.load(std::memory_order_relaxed);
    const auto first = static_cast<std::size_t>(written % mCapacity);
    const std::size_t unbroken = std::min(frames, mCapacity - first);
    for (std::size_t i = 0; i < mChannels.size(); ++i) {
        std::copy_n(channels[i], unbroken, &mChannels[i][first]);
        std::copy_n(channels[i] + unbroken, frames - unbroken, mChannels[i].get());
    }
    mWritten.store(written + frames, std::memory_order_release);
}

std::size_t SoundRing::GetAvailable() const {
    const std::uint64_t written = mWritten.load(std::memory_order_acquire);
    return static_cast<std::size_t>(written - mRead.load(std::memory_order_relaxed));
}

void SoundRing::Read(float* const* channels, std::size_t frames) {
    const std::uint64_t read = mRead.load(std::memory_order_relaxed);
    const auto first = static_cast<std::size_t>(read % mCapacity);
    const std::size_t unbroken = std::min(frames, mCapacity - first);
    for (std::size_t i = 0; i < mChannels.size(); ++i) {
        std::copy_n(&mChannels[i][first], unbroken, channels[i]);
        std::copy_n(mChannels[i].get(), frames - unbroken, channels[i] + unbroken);
    }
    mRead.store(read + frames, std::memory_order_release);
}

}  // namespace tessaly
