#pragma once

#include <string>

namespace tessaly {

/// Two sounds to try effects on: a few bars of chords, and a beat to key them with.
class TourSound {
public:
    static constexpr int kSampleRate = 48000;
    static constexpr int kSeconds = 8;

    /// Write stereo files there. Throw AudioFileError.
    static void WriteChords(const std::string& path);
    static void WriteBeat(const std::string& path);
};

}  // namespace tessaly
