#include "Environment.h"

#include <cstdlib>

namespace zeltests {

void SetVariable(const std::string& name, const char* value) {
    if (value != nullptr) {
        ::setenv(name.c_str(), value, 1);
    } else {
        ::unsetenv(name.c_str());
    }
}

}  // namespace zeltests
