#pragma once

namespace zeltests {

/// While it lives, this thread may not write where nobody may, also when an administrator runs the test.
class Unprivileged {
public:
    Unprivileged();
    ~Unprivileged();
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;
};

}  // namespace zeltests
