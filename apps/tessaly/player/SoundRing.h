#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tessaly {

/// Sound on its way from the thread that reads it to the thread that plays it: a queue of frames, of some channels
/// each. One thread writes, one reads; neither waits for the other, allocates or locks.
class SoundRing {
public:
    /// Keeps up to `capacity` frames.
    SoundRing(std::size_t channelCount, std::size_t capacity);
    SoundRing(const SoundRing&) = delete;
    SoundRing& operator=(const SoundRing&) = delete;

    std::size_t GetCapacity() const { return mCapacity; }

    // The writer's

    std::size_t GetRoom() const;
    /// Puts `frames` frames behind the others; there has to be room. `channels` has one pointer per channel.
    void Write(const float* const* channels, std::size_t frames);
    /// Nothing will follow what has been written.
    void End() { mHasEnded.store(true, std::memory_order_release); }

    // The reader's

    std::size_t GetAvailable() const;
    /// Takes the first `frames` frames; they have to be there.
    void Read(float* const* channels, std::size_t frames);
    /// Asked before GetAvailable: whether what that says then is all that will ever come.
    bool HasEnded() const { return mHasEnded.load(std::memory_order_acquire); }

private:
    const std::size_t mCapacity;
    std::vector<std::unique_ptr<float[]>> mChannels;
    std::atomic<std::uint64_t> mWritten;  ///< frames, ever
    std::atomic<std::uint64_t> mRead;
    std::atomic<bool> mHasEnded;
};

}  // namespace tessaly
