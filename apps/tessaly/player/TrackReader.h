#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "AudioFileReader.h"
#include "ChannelBuffers.h"

namespace tessaly {

/// The sound of a track and of its side-chain, read as one that never ends: behind its last frame comes its first
/// again. A side-chain that is shorter than the track goes on as silence, a longer one is not read to its end; it
/// starts again with the track. One thread at a time.
class TrackReader {
public:
    /// Opens the files; an empty path for no side-chain. Throws AudioFileError, also for a side-chain of another sample
    /// rate.
    TrackReader(const std::string& soundPath, const std::string& sideChainPath);
    ~TrackReader();

    int GetSampleRate() const { return mSound.GetSampleRate(); }
    std::int64_t GetFrameCount() const { return mSound.GetFrameCount(); }
    std::size_t GetSoundChannelCount() const { return static_cast<std::size_t>(mSound.GetChannelCount()); }
    std::size_t GetSideChainChannelCount() const;
    std::size_t GetChannelCount() const { return GetSoundChannelCount() + GetSideChainChannelCount(); }

    /// Goes to a frame from 0 to GetFrameCount(), the last of which is the beginning. Throws AudioFileError.
    void Seek(std::int64_t frame);
    /// Reads the next `frames` frames: `channels` has one pointer per channel, those of the side-chain behind the
    /// others. Returns how many were read: `frames`, or fewer, and at least one, before the end. Throws AudioFileError.
    int Read(float* const* channels, int frames);

private:
    int ReadFiles(float* const* channels, int frames);
    int ReadKept(float* const* channels, int frames);
    void KeepShortSound();

    AudioFileReader mSound;
    std::unique_ptr<AudioFileReader> mSideChain;  ///< or none
    std::int64_t mPosition;
    /// A sound that is so short that going back to its beginning again and again would be all that is done.
    std::unique_ptr<ChannelBuffers> mKept;
};

}  // namespace tessaly
