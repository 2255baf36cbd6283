#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tessaly {

/// The arguments of a command, one after the other.
class Arguments {
public:
    /// Begins with the one at `first`. `arguments` outlive the object.
    Arguments(const std::vector<std::string>& arguments, std::size_t first);

    bool AtEnd() const;
    /// The next one. Not at the end.
    std::string Take();
    /// The next one, which `option` needs. Throws UsageError when there is none.
    std::string TakeValueOf(const std::string& option);

private:
    const std::vector<std::string>& mArguments;
    std::size_t mNext;
};

}  // namespace tessaly
