#include "LoopWaiter.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace zelcore {
namespace threads {

bool LoopWaiter::CanWatchDescriptors() { return true; }

LoopWaiter::LoopWaiter() : mReadEnd(-1), mWriteEnd(-1) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::system_category(), "could not make the main loop's pipe");
    mReadEnd = ends[0];
    mWriteEnd = ends[1];
}

LoopWaiter::~LoopWaiter() {
    ::close(static_cast<int>(mReadEnd));
    ::close(static_cast<int>(mWriteEnd));
}

void LoopWaiter::Wake() noexcept {
    const char byte = 0;
    // A full pipe wakes as well as one more byte would.
    while (::write(static_cast<int>(mWriteEnd), &byte, 1) < 0 && errno == EINTR) {
    }
}

void LoopWaiter::Wait(int milliseconds, std::vector<Descriptor>& descriptors) {
    std::vector<pollfd> polled;
    polled.reserve(descriptors.size() + 1);
    polled.push_back({static_cast<int>(mReadEnd), POLLIN, 0});
    for (const Descriptor& one : descriptors) polled.push_back({one.descriptor, POLLIN, 0});

    // An interrupted wait is a short one; the loop comes back with the time that is left.
    if (::poll(polled.data(), static_cast<nfds_t>(polled.size()), milliseconds) <= 0) return;

    if (polled[0].revents != 0) {
        char buffer[256];
        while (::read(static_cast<int>(mReadEnd), buffer, sizeof(buffer)) > 0) {
        }
    }
    for (std::size_t i = 0; i < descriptors.size(); ++i) {
        const short events = polled[i + 1].revents;
        if (events != 0) descriptors[i].seen = (events & POLLNVAL) ? kInvalid : kReadable;
    }
}

}  // namespace threads
}  // namespace zelcore
