#include "ChildRun.h"

#include "support/WaitFor.h"

namespace zeltests {

std::string ChildRun::WaitForEnd() {
    WaitFor([this] { return GetState() != "runs"; });
    return GetState();
}

}  // namespace zeltests
