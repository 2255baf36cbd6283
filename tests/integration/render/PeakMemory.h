#pragma once

#include <string>
#include <vector>

namespace zeltests {

/// Runs `arguments[0]`, with `environment` ("NAME=value") added to this process's, to its end and answers the most
/// memory that it had at any time, in kilobytes. Fails the test when it does not end well.
long RunAndMeasurePeak(const std::vector<std::string>& arguments, const std::vector<std::string>& environment);

}  // namespace zeltests
