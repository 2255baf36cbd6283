#pragma once

namespace tessaly {

/// While one lives, the first interrupt (Ctrl-C) or request to terminate cancels the open dialog as its Cancel button
/// would; the next one ends the program as usual. One at a time, main thread.
class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;
};

}  // namespace tessaly
