#include "DiskWaits.h"

#include <atomic>
#include <cerrno>

#include <sys/syscall.h>
#include <unistd.h>

namespace zeltests {

namespace {

DiskWaits::Answer sAnswer;
std::atomic<int> sCount{0};

}  // namespace

DiskWaits::DiskWaits() : DiskWaits([](int) { return 0; }) {}

DiskWaits::DiskWaits(const Answer& answer) {
    sCount = 0;
    sAnswer = answer;
}

DiskWaits::~DiskWaits() { sAnswer = nullptr; }

int DiskWaits::GetCount() const { return sCount; }

}  // namespace zeltests

/// The program's own one comes before the system's, for its libraries too.
extern "C" __attribute__((visibility("default"))) int fsync(int descriptor) {
    if (!zeltests::sAnswer) return static_cast<int>(::syscall(SYS_fsync, descriptor));
    ++zeltests::sCount;
    errno = zeltests::sAnswer(descriptor);
    return errno == 0 ? 0 : -1;
}
