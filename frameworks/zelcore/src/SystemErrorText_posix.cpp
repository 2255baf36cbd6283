#include "SystemErrorText.h"

namespace zelcore {
namespace filesupport {

std::string GetSystemErrorText(int error) { return std::system_category().message(error); }

std::error_condition GetSystemErrorMeaning(int error) { return std::system_category().default_error_condition(error); }

}  // namespace filesupport
}  // namespace zelcore
