#include <zelcore/MainLoop.h>

#include "MainLoopRegistry.h"

namespace zelcore {
namespace threads {

MainLoop::~MainLoop() = default;

MainLoop* MainLoop::GetInstalled() { return MainLoopRegistry::Instance().GetLoop(); }

void MainLoop::Install(MainLoop* loop) { MainLoopRegistry::Instance().SetLoop(loop); }

}  // namespace threads
}  // namespace zelcore
