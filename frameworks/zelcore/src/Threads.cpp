#include <zelcore/Threads.h>

#include "MainLoopRegistry.h"

namespace zelcore {
namespace threads {

void AsyncCallFromMainThread(const boost::function<void()>& function) { MainLoopRegistry::Instance().Post(function); }

bool IsMainThread() { return MainLoopRegistry::Instance().IsMainThread(); }

}  // namespace threads
}  // namespace zelcore
