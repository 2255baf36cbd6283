#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "SoundFileHandle.h"

namespace tessaly {

/// An audio file that is read from its beginning to its end, of any format that libsndfile knows. What a file says of
/// itself is not believed beyond the limits below. One thread at a time.
class AudioFileReader {
public:
    static constexpr int kMaxChannels = 64;
    static constexpr int kMinSampleRate = 1000;
    static constexpr int kMaxSampleRate = 768000;

    /// Throws AudioFileError for a file that is not there, no sound, without any frames, beyond the limits or cut off.
    explicit AudioFileReader(const std::string& path);
    AudioFileReader(const AudioFileReader&) = delete;
    AudioFileReader& operator=(const AudioFileReader&) = delete;

    const std::string& GetPath() const { return mPath; }
    int GetChannelCount() const { return mChannelCount; }
    int GetSampleRate() const { return mSampleRate; }
    std::int64_t GetFrameCount() const { return mFrameCount; }

    /// Reads the next `frames` frames, or those that are left; `channels` has one pointer per channel, each to room for
    /// `frames` samples. Full scale is 1. Returns how many were read, 0 at the end. Throws AudioFileError when the file
    /// is damaged or ends before it should.
    int Read(float* const* channels, int frames);

private:
    void CheckLimits() const;

    const std::string mPath;
    SoundFileHandle mFile;
    int mChannelCount;
    int mSampleRate;
    std::int64_t mFrameCount;
    std::int64_t mPosition;
    std::vector<float> mSamples;  ///< as they are in the file, channel beside channel
};

}  // namespace tessaly
