#pragma once

#include <string>

namespace zeltests {

/// Whether a library with that full path is loaded into this process.
bool IsLoaded(const std::string& path);

}  // namespace zeltests
