#include "support/Unprivileged.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zeltests {

namespace {

/// It stays permitted, so that it can be taken up again.
void SetMayWriteEverywhere(bool may) {
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};
    if (syscall(SYS_capget, &header, data) != 0) return;
    constexpr unsigned kBit = 1u << CAP_DAC_OVERRIDE;
    data[0].effective = may ? data[0].effective | (data[0].permitted & kBit) : data[0].effective & ~kBit;
    syscall(SYS_capset, &header, data);
}

}  // namespace

Unprivileged::Unprivileged() { SetMayWriteEverywhere(false); }

Unprivileged::~Unprivileged() { SetMayWriteEverywhere(true); }

}  // namespace zeltests
