#pragma once

#include <cstdint>
#include <string>

namespace zeltests {

/// What tests of files need of the platform, without the code under test.

/// The number that a file keeps for as long as it is the same file.
std::uint64_t GetFileNumber(const std::string& path);

/// Sets when a file was changed last, in milliseconds since 1970 UTC.
void SetChangeTime(const std::string& path, std::int64_t milliseconds);

}  // namespace zeltests
