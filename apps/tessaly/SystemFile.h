#pragma once

#include <filesystem>
#include <system_error>

namespace tessaly {

/// What the standard library's file system leaves to the platform.
class SystemFile {
public:
    /// Makes an empty file where nothing was; std::errc::file_exists where something is.
    static std::error_code CreateNew(const std::filesystem::path& path);
    /// The reason why a file that is there may not be written; none when it may. The file is as it was.
    static std::error_code CheckWritable(const std::filesystem::path& path);
};

}  // namespace tessaly
