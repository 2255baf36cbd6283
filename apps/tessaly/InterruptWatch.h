#pragma once

#include <boost/function.hpp>

namespace tessaly {

/// While one lives, the first interrupt (Ctrl-C) or request to terminate calls a function from the main loop; the next
/// one ends the program as usual. One at a time, main thread.
class InterruptWatch {
public:
    /// There is a main loop, and it outlives the object.
    explicit InterruptWatch(const boost::function<void()>& onInterrupt);
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;
};

}  // namespace tessaly
