#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tessaly {

/// The arguments after the command, one after the other.
class Arguments {
public:
    /// `arguments` begin with the command and outlive the object.
    explicit Arguments(const std::vector<std::string>& arguments);

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
