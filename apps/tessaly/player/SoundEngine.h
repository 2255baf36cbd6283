#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <zelaudiofilterhost/SoundThreadValue.h>

#include "ChannelBuffers.h"
#include "FileFeeder.h"
#include "PlayingChain.h"

namespace tessaly {

/// What the sound thread does: takes the sound from the feeder, in blocks of a fixed size, sends it through the chain,
/// measures it. Main thread but for Render.
class SoundEngine {
public:
    /// Effects are started for blocks of so many frames.
    static constexpr int kBlockFrames = 512;

    /// The feeder outlives the engine.
    explicit SoundEngine(FileFeeder& feeder);
    /// Not while a Render is under way.
    ~SoundEngine();
    SoundEngine(const SoundEngine&) = delete;
    SoundEngine& operator=(const SoundEngine&) = delete;

    std::size_t GetChannelCount() const { return mChannelCount; }

    /// From the next block on. Its effects are in the track's format and started for kBlockFrames frames. The chain
    /// before is let go of by this or by a later call of SetChain or CollectChains, when the sound thread has.
    void SetChain(const PlayingChainPtr& chain);
    void CollectChains() { mChain.Collect(); }
    void SetLooping(bool loops) { mLoops = loops; }

    /// Blocks that went through the chain.
    std::uint64_t GetBlockCount() const { return mBlockCount; }
    /// Blocks that the disk did not give in time, and those that were noted as lost.
    std::uint64_t GetLostCount() const { return mLostCount; }
    /// Any thread.
    void NoteLost() { ++mLostCount; }
    /// Frames that were rendered since the sound was over; they hold what the effects make of silence.
    std::int64_t GetFramesAfterEnd() const { return mFramesAfterEnd; }
    /// The loudest sample of each channel since the last call; full scale is 1.
    std::vector<float> TakePeaks();

    /// Gives the next `frames` frames of the track's sound, as many as are wanted: `channels` has one pointer per
    /// channel. Silent until the feeder has something. Samples that are no finite numbers become silence. Sound thread;
    /// allocates nothing, locks nothing, waits for nobody.
    void Render(float* const* channels, int frames);

private:
    bool MakeBlock();
    void Measure();

    FileFeeder& mFeeder;
    const std::size_t mChannelCount;
    zelaudiofilterhost::SoundThreadValue<PlayingChainPtr> mChain;
    std::atomic<bool> mLoops;
    std::atomic<std::uint64_t> mBlockCount;
    std::atomic<std::uint64_t> mLostCount;
    std::atomic<std::int64_t> mFramesAfterEnd;
    std::vector<std::atomic<float>> mPeaks;

    ChannelBuffers mBlock;  ///< the track's channels, then those of the side-chain
    int mUsed;              ///< frames of the block that were given out already
};

}  // namespace tessaly
