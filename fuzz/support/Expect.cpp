#include "support/Expect.h"

#include <cstdio>
#include <cstdlib>

namespace zelfuzz {

void Fail(const char* what) {
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

}  // namespace zelfuzz
