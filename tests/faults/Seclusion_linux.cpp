#include "Seclusion.h"

#include <cstring>
#include <fstream>

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zelfaults {

namespace {

/// The users of the new namespace: this one, as its administrator.
void MapUser(uid_t user, gid_t group) {
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
}

bool StartLoopback() {
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request = {};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP | IFF_RUNNING;
    const bool done = ioctl(descriptor, SIOCSIFFLAGS, &request) == 0;
    close(descriptor);
    return done;
}

}  // namespace

bool Seclusion::Enter() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (unshare(CLONE_NEWNS | CLONE_NEWNET) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS | CLONE_NEWNET) != 0) return false;
        MapUser(user, group);
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 && StartLoopback();
}

bool Seclusion::MountSmallDisk(const std::string& folder, unsigned long bytes) {
    const std::string options = "mode=0700,size=" + std::to_string(bytes);
    return mount("zelfaults", folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
}

}  // namespace zelfaults
