#pragma once

#include <cstddef>

namespace zeltests {

/// Looks at the processes of this machine.
class ProcessList {
public:
    /// How many scanner processes there are, dead ones that nobody has taken notice of included.
    static std::size_t CountScanners();
};

}  // namespace zeltests
