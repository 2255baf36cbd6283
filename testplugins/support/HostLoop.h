#pragma once

#include <zelcore/MainLoop.h>

namespace zeltestplugins {

/// Runs what is posted to the host's event loop so far, in the middle of a call. Nothing without a loop.
inline void RunHostLoop() {
    zelcore::threads::MainLoop* const loop = zelcore::threads::MainLoop::GetInstalled();
    if (loop == nullptr) return;
    loop->Post([loop] { loop->Quit(); });
    loop->Run();
}

}  // namespace zeltestplugins
