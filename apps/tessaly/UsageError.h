#pragma once

#include <stdexcept>
#include <string>

namespace tessaly {

/// Thrown for a command line that makes no sense; the text tells why.
class UsageError : public std::runtime_error {
public:
    explicit UsageError(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace tessaly
