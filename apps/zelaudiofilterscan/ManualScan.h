#pragma once

#include <string>

namespace zelaudiofilterscan {

/// Describes one plug-in file for a person: what `zelaudiofilterscan.exe FILE` prints. `succeeded` tells whether it is
/// a working plug-in; if not, the text says why.
std::string DescribeForPeople(const std::string& path, bool& succeeded);

}  // namespace zelaudiofilterscan
