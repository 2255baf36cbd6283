#pragma once

#include <stdexcept>
#include <string>

namespace tessaly {

/// Thrown for an audio file that cannot be read or written; the text names the file and tells why, fit to be printed.
class AudioFileError : public std::runtime_error {
public:
    AudioFileError(const std::string& path, const std::string& what);
};

}  // namespace tessaly
