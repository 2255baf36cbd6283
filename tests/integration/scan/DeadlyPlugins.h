#pragma once

#include <string>

namespace zeltests {

/// Whether the bad test plug-in of that name, without an ending, takes the process down or never comes back on this
/// platform; the others say of themselves that they do not work.
bool IsDeadly(const std::string& name);

}  // namespace zeltests
