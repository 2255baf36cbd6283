#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

/// What tells one state of a file from another without reading it.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;  ///< of the file on its device
    std::uint64_t size = 0;
    std::int64_t modificationTime = 0;  ///< as finely as the system counts it

    bool operator==(const FileIdentity&) const = default;
};

/// The state of a regular file, or none when there is no such file. Throws zelcore::filesupport::FileError when the
/// system does not let it find out.
std::optional<FileIdentity> IdentifyFile(const zelcore::ustring& path);

/// Overwrites the `tail` at the end of the file by `replacement`, which ends with the same tail, in one write, if the
/// file is in the state `identity` and does end so; false, and nothing done, otherwise. `identity` is then the new
/// state. When the write fails or comes out short the file gets its old end back and zelcore::filesupport::FileError
/// is thrown; `identity` is then its state now, or no file's when even that failed.
bool ReplaceTail(const zelcore::ustring& path, FileIdentity& identity, std::string_view tail,
                 std::string_view replacement);

}  // namespace zelaudiofilterhost
