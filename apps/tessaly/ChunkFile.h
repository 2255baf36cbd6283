#pragma once

#include <string>

namespace tessaly {

/// What a file of chunks (WAV with its large and its big-endian variants, W64, AIFF) says of its own length.
class ChunkFile {
public:
    /// Whether the chunk that has the sound reaches beyond the file's end. False for a file of another kind, and where
    /// the length was left open, as programs do that write into a pipe.
    static bool IsCutOff(const std::string& path);
};

}  // namespace tessaly
