#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <thread>
#include <vector>

/// What bad plug-ins do. Each is the real thing; load them only in a process that may be lost.
namespace zeltestplugins {

/// Ends the process by touching memory that is not there.
inline void Crash() {
    // Read through volatile, so that the compiler does not see where it leads.
    volatile std::uintptr_t nowhere = 16;
    *reinterpret_cast<volatile int*>(nowhere) = 1;
}

/// Never comes back. Sleeps, to leave the processor to others.
inline void Hang() {
    for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
}

/// Takes memory without end, and touches it, at about 800 MB a second: somebody outside has to end the process.
inline void AllocateForever() {
    constexpr std::size_t kStep = 4 << 20;
    constexpr std::chrono::milliseconds kPause(5);
    std::vector<char*> blocks;
    for (;;) {
        blocks.push_back(static_cast<char*>(std::malloc(kStep)));
        for (std::size_t i = 0; blocks.back() != nullptr && i < kStep; i += 4096) blocks.back()[i] = 1;
        std::this_thread::sleep_for(kPause);
    }
}

}  // namespace zeltestplugins
