#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

/// One of the formats that are written. Any thread.
class AudioFileFormat {
public:
    static constexpr int kNoCode = 0;

    /// That of the path's extension, whose capitals do not matter; null for an extension that is none of them. Lives as
    /// long as the program.
    static const AudioFileFormat* FindForPath(const std::string& path);
    /// ".wav, .flac, …"
    static std::string ListExtensions();

    /// What libsndfile calls it for a file of that many samples, counted in all channels; kNoCode when none can be as
    /// long.
    int GetCode(std::uint64_t samples) const;
    /// Whether samples beyond full scale are cut off.
    bool Clips() const { return mClips; }

    constexpr AudioFileFormat(const char* extension, int code, int largeCode, unsigned bytesPerSample, bool clips)
        : mExtension(extension), mCode(code), mLargeCode(largeCode), mBytesPerSample(bytesPerSample), mClips(clips) {}

private:
    const char* mExtension;
    int mCode;
    int mLargeCode;            ///< for files whose length does not fit into 32 bits
    unsigned mBytesPerSample;  ///< at most
    bool mClips;
};

}  // namespace tessaly
