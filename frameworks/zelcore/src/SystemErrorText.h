#pragma once

#include <string>
#include <system_error>

namespace zelcore {
namespace filesupport {

/// What the system says of one of its error numbers, in UTF-8 and without an end of line. Any thread.
std::string GetSystemErrorText(int error);
/// What all systems mean by it; of no kind that is known where only this one does. Any thread.
std::error_condition GetSystemErrorMeaning(int error);

}  // namespace filesupport
}  // namespace zelcore
