#pragma once

#include <functional>

namespace zeltests {

/// Takes, while it lives, the place of what waits until a file is on the disk. A test cannot cut the power, but it can
/// see who waits, and for what. One at a time.
class DiskWaits {
public:
    /// Told the descriptor of each file that is waited for; 0, or the system's number of what went wrong.
    typedef std::function<int(int)> Answer;

    /// All waits succeed at once.
    DiskWaits();
    explicit DiskWaits(const Answer& answer);
    ~DiskWaits();
    DiskWaits(const DiskWaits&) = delete;
    DiskWaits& operator=(const DiskWaits&) = delete;

    int GetCount() const;
};

}  // namespace zeltests
