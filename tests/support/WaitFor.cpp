#include "support/WaitFor.h"

#include <thread>

namespace zeltests {

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit,
             const std::function<void()>& meanwhile) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) return condition();
        if (meanwhile) meanwhile();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace zeltests
