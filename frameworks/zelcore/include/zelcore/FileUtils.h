#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <zelcore/Dir.h>
#include <zelcore/File.h>

namespace zelcore {
namespace utility {

/// Whole-file reading and writing. Any thread.
class ZELCORE_API FileUtils {
public:
    /// Replaces the file's content by `bytes`: writes a new file beside it and renames it over the old one, so that
    /// whoever looks finds the old content or the new, never half of it, even when this process is killed meanwhile.
    /// Throws filesupport::FileError; the old file is then as it was and nothing is left beside it.
    static void SimpleWriteStringToFile(const ustring& path, std::string_view bytes);

    /// The same for what people would miss, such as documents and settings: the new content is on the disk before it
    /// replaces the old, so that a power cut leaves the one or the other as well. Waits for the disk, some milliseconds
    /// or more.
    static void WriteStringToFileDurably(const ustring& path, std::string_view bytes);

    /// Reads a whole file. Throws filesupport::FileError when it cannot be read or is larger than `maxBytes`.
    static std::string ReadFileToString(const filesupport::File& file, std::size_t maxBytes);

    /// Renames `file` to a free name beside it (its name, `suffix`, and a number when that is taken) and returns that
    /// file. For what cannot be understood and must not be lost. Throws filesupport::FileError.
    static filesupport::File KeepAside(const filesupport::File& file, const ustring& suffix);

    /// Deletes the new files that processes which were killed in the middle of one of the writes above left in that
    /// folder. Those of processes that still run stay. Costs one look at the folder; throws nothing.
    static void RemoveLeftovers(const filesupport::Dir& folder) noexcept;
};

}  // namespace utility
}  // namespace zelcore
