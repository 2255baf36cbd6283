#include <charconv>

#include "FileSystem.h"

namespace zelcore {
namespace filesupport {

unsigned long FindTemporaryOwner(std::string_view name) {
    if (!name.starts_with(kTemporaryPrefix) || !name.ends_with(kTemporarySuffix)) return 0;
    name.remove_prefix(kTemporaryPrefix.size());
    unsigned long process = 0;
    const auto result = std::from_chars(name.data(), name.data() + name.size(), process);
    return result.ec == std::errc() && *result.ptr == '-' ? process : 0;
}

}  // namespace filesupport
}  // namespace zelcore
