#pragma once

#include <string>

namespace zeltests {

/// Sets an environment variable of this process and of those that it starts, or takes it away (null).
void SetVariable(const std::string& name, const char* value);

}  // namespace zeltests
