#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace zeltests {

/// While it lives, memory that is allocated on this thread is not looked for by the leak check. For plug-ins of other
/// people, many of which leak: once their modules are unloaded nothing tells their memory from ours. That we leak
/// nothing is shown with plug-ins of our own.
class IgnorePluginLeaks {
public:
#if defined(__SANITIZE_ADDRESS__)
    IgnorePluginLeaks() { __lsan_disable(); }
    ~IgnorePluginLeaks() { __lsan_enable(); }
#else
    IgnorePluginLeaks() {}
    ~IgnorePluginLeaks() {}
#endif
    IgnorePluginLeaks(const IgnorePluginLeaks&) = delete;
    IgnorePluginLeaks& operator=(const IgnorePluginLeaks&) = delete;
};

}  // namespace zeltests
