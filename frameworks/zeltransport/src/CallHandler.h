#pragma once

namespace zeltransport {

/// Runs a handler that somebody else supplied; false when it threw. An exception on the I/O thread has nobody above it
/// to go to, and must not end the host.
template <typename Function>
bool CallHandler(const Function& function) {
    try {
        function();
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace zeltransport
