#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

/// One of the formats that are written. Any thread.
class AudioFileFormat {
public:
    /// That of the path's extension, whose capitals do not matter; null for an extension that is none of them. Lives as
    /// long as the program.
    static const AudioFileFormat* FindForPath(const std::string& path);
    /// ".wav, .flac, …"
    static std::string ListExtensions();

    /// What libsndfile calls it for a file of that many bytes of 32-bit samples.
    int GetCode(std::uint64_t bytes) const;
    /// Whether samples beyond full scale are cut off.
    bool Clips() const { return mClips; }

    constexpr AudioFileFormat(const char* extension, int code, int largeCode, bool clips)
        : mExtension(extension), mCode(code), mLargeCode(largeCode), mClips(clips) {}

private:
    const char* mExtension;
    int mCode;
    int mLargeCode;  ///< for files whose length does not fit into 32 bits
    bool mClips;
};

}  // namespace tessaly
