#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "SoundFileHandle.h"

namespace tessaly {

/// An audio file that is being read, of any format that libsndfile knows. What a file says of itself is not believed
/// beyond the limits below. One thread at a time.
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

    /// Goes to a frame: the next Read begins there. What is not between 0 and GetFrameCount() is moved to the nearer
    /// end. Throws AudioFileError when the file cannot be read from there; the next Read begins where it was then.
    void Seek(std::int64_t frame);
    /// Where the next Read begins.
    std::int64_t GetPosition() const { return mPosition; }

private:
    void CheckLimits() const;
    void Reopen();

    const std::string mPath;
    SoundFileHandle mFile;
    int mFormat;  ///< what libsndfile calls it
    int mChannelCount;
    int mSampleRate;
    std::int64_t mFrameCount;
    std::int64_t mPosition;
    std::vector<float> mSamples;  ///< as they are in the file, channel beside channel
};

}  // namespace tessaly
