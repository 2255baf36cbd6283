#include "SoundEngine.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

SoundEngine::SoundEngine(FileFeeder& feeder)
    : mFeeder(feeder),
      mChannelCount(feeder.GetTrack().GetSoundChannelCount()),
      mLoops(false),
      mBlockCount(0),
      mLostCount(0),
      mFramesAfterEnd(0),
      mPeaks(mChannelCount),
      mBlock(feeder.GetTrack().GetChannelCount(), kBlockFrames),
      mUsed(kBlockFrames) {}

SoundEngine::~SoundEngine() = default;

void SoundEngine::SetChain(const PlayingChainPtr& chain) { mChain.Publish(chain); }

std::vector<float> SoundEngine::TakePeaks() {
    std::vector<float> peaks;
    for (std::atomic<float>& peak : mPeaks) peaks.push_back(peak.exchange(0.0f));
    return peaks;
}

// The sound thread

void SoundEngine::Render(float* const* channels, int frames) {
    for (int done = 0; done < frames;) {
        const bool hasSound = mUsed < kBlockFrames || MakeBlock();
        const int count = std::min(frames - done, hasSound ? kBlockFrames - mUsed : frames);
        for (std::size_t i = 0; i < mChannelCount; ++i) {
            if (hasSound)
                std::copy_n(mBlock.GetChannels()[i] + mUsed, count, channels[i] + done);
            else
                std::fill_n(channels[i] + done, count, 0.0f);
        }
        if (hasSound) mUsed += count;
        done += count;
    }
}

/// False as long as there is nothing to play.
bool SoundEngine::MakeBlock() {
    const FileFeeder::Reading reading = mFeeder.Read(mBlock.GetChannels(), kBlockFrames, mLoops);
    if (reading.kind == FileFeeder::kNotYet) return false;
    mBlock.Silence(0, mBlock.GetChannelCount(), reading.frames);
    // Effects go on in time, whatever became of the sound.
    if (const PlayingChainPtr& chain = mChain.Take())
        chain->Process(mBlock.GetChannels(), mBlock.GetChannels(), kBlockFrames);
    Measure();
    mUsed = 0;
    ++mBlockCount;
    if (reading.kind == FileFeeder::kLate) ++mLostCount;
    const bool isOver = reading.kind == FileFeeder::kEnd || reading.kind == FileFeeder::kFailed;
    mFramesAfterEnd = isOver ? mFramesAfterEnd + kBlockFrames - reading.frames : 0;
    return true;
}

void SoundEngine::Measure() {
    for (std::size_t channel = 0; channel < mChannelCount; ++channel) {
        float peak = mPeaks[channel].load(std::memory_order_relaxed);
        float loudest = 0.0f;
        float* const samples = mBlock.GetChannels()[channel];
        for (int i = 0; i < kBlockFrames; ++i) {
            if (!std::isfinite(samples[i])) samples[i] = 0.0f;
            loudest = std::max(loudest, std::fabs(samples[i]));
        }
        while (loudest > peak && !mPeaks[channel].compare_exchange_weak(peak, loudest)) {
        }
    }
}

}  // namespace tessaly
