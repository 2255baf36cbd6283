#pragma once

#include <boost/function.hpp>

#include <zelcore/Export.h>

namespace zelcore {
namespace threads {

/// Runs `function` later on the main thread, in the order of posting; from the main thread too it never runs at once.
/// Any thread. Calls made before a main loop is installed wait for it. The function must not throw.
ZELCORE_API void AsyncCallFromMainThread(const boost::function<void()>& function);

/// True on the thread that installed the main loop, or, before that, on the one that loaded this library.
ZELCORE_API bool IsMainThread();

}  // namespace threads
}  // namespace zelcore
