#include "FaultPoints.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <new>

#include <dlfcn.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zelfaults {

namespace {

enum class How { kKill, kKillAfter, kKillHalf, kFull, kReadOnly, kBroken };
/// What is done to a file, as far as it makes a difference to a disk.
enum class Deed { kOpen, kWrite, kOverwrite, kRename, kDelete, kSync };

char gFolder[PATH_MAX];
How gHow = How::kKill;
unsigned long gFileAt = 0;
std::atomic<unsigned long> gFileCount{0};
std::atomic<bool> gCountsFiles{false};

unsigned long gAllocationAt = 0;
unsigned long gRefused = 0;
std::atomic<unsigned long> gAllocationCount{0};
std::atomic<bool> gCountsAllocations{false};

/// The function of the system that has the same name as one of ours.
template <typename Function>
Function* FindNext(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool IsInFolder(const char* path) { return std::strncmp(path, gFolder, std::strlen(gFolder)) == 0; }

bool IsInFolder(int descriptor) {
    char link[64];
    char target[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link, target, sizeof target - 1);
    if (length < 0) return false;
    target[length] = '\0';
    return IsInFolder(target);
}

/// One thing that is done to a file.
class FileStep {
public:
    template <typename Place>
    FileStep(Deed deed, Place place) : mDeed(deed) {
        if (!gCountsFiles || !IsInFolder(place)) return;
        const unsigned long number = gFileCount++;
        mIsDue = number == gFileAt;
        mIsPast = number >= gFileAt;
        if (mIsDue && gHow == How::kKill) FaultPoints::Die();
    }

    /// Whether it is to fail; errno says why then.
    bool Fails() const {
        const int error = GetError();
        if (error != 0) errno = error;
        return error != 0;
    }
    bool IsHalved() const { return mIsDue && gHow == How::kKillHalf && mDeed == Deed::kWrite; }
    void Done() const {
        if (mIsDue && (gHow == How::kKillAfter || gHow == How::kKillHalf)) FaultPoints::Die();
    }

private:
    int GetError() const {
        if (gHow == How::kFull && mIsPast && (mDeed == Deed::kOpen || mDeed == Deed::kWrite)) return ENOSPC;
        if (gHow == How::kReadOnly && mIsPast && mDeed != Deed::kWrite && mDeed != Deed::kOverwrite &&
            mDeed != Deed::kSync)
            return EROFS;
        return gHow == How::kBroken && mIsDue ? EIO : 0;
    }

    const Deed mDeed;
    bool mIsDue = false;
    bool mIsPast = false;
};

/// Bytes that have their place on the disk already need no more of it.
Deed TellWrite(int descriptor, std::size_t size, off_t offset) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && offset + static_cast<off_t>(size) <= status.st_size ? Deed::kOverwrite
                                                                                                  : Deed::kWrite;
}

ssize_t WriteAt(const char* name, int descriptor, const void* bytes, std::size_t size, off_t offset) {
    static auto* const next = FindNext<ssize_t(int, const void*, std::size_t, off_t)>(name);
    const FileStep step(TellWrite(descriptor, size, offset), descriptor);
    if (step.Fails()) return -1;
    const ssize_t result = next(descriptor, bytes, step.IsHalved() ? size / 2 : size, offset);
    step.Done();
    return result;
}

int Open(const char* name, const char* path, int flags, mode_t mode) {
    auto* const next = FindNext<int(const char*, int, ...)>(name);
    if ((flags & (O_WRONLY | O_RDWR | O_CREAT)) == 0) return next(path, flags, mode);
    const FileStep step(Deed::kOpen, path);
    if (step.Fails()) return -1;
    const int result = next(path, flags, mode);
    step.Done();
    return result;
}

bool IsRefused() {
    if (!gCountsAllocations) return false;
    const unsigned long number = gAllocationCount++;
    return number >= gAllocationAt && number - gAllocationAt < gRefused;
}

void* Allocate(std::size_t size) noexcept { return IsRefused() ? nullptr : std::malloc(size != 0 ? size : 1); }

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

unsigned long CountOpenHandles() {
    unsigned long highest = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor)
        if (fcntl(descriptor, F_GETFD) >= 0) highest = static_cast<unsigned long>(descriptor) + 1;
    return highest;
}

unsigned long ReadAddressSpace() {
    std::ifstream file("/proc/self/statm");
    unsigned long pages = 0;
    file >> pages;
    return pages * static_cast<unsigned long>(sysconf(_SC_PAGESIZE));
}

How ToHow(const std::string& word) {
    if (word == "kill-after") return How::kKillAfter;
    if (word == "kill-half") return How::kKillHalf;
    if (word == "full") return How::kFull;
    if (word == "readonly") return How::kReadOnly;
    return word == "broken" ? How::kBroken : How::kKill;
}

void SetLimit(__rlimit_resource resource, unsigned long value) {
    rlimit limit;
    getrlimit(resource, &limit);
    limit.rlim_cur = value;
    setrlimit(resource, &limit);
}

}  // namespace

void FaultPoints::CountFiles(const std::string& folder, const FaultPlan& plan) {
    std::snprintf(gFolder, sizeof gFolder, "%s/", folder.c_str());
    gHow = ToHow(plan.how);
    gFileAt = plan.at;
    gFileCount = 0;
    gCountsFiles = true;
}

void FaultPoints::CountAllocations(const FaultPlan& plan) {
    gAllocationAt = plan.at;
    gRefused = plan.GetAmount();
    gAllocationCount = 0;
    gCountsAllocations = true;
}

unsigned long FaultPoints::GetAllocations() { return gAllocationCount; }

void FaultPoints::LimitHandles(unsigned long spare) { SetLimit(RLIMIT_NOFILE, CountOpenHandles() + spare); }

void FaultPoints::LimitMemory(unsigned long spare) { SetLimit(RLIMIT_AS, ReadAddressSpace() + spare); }

void FaultPoints::LimitFileSize(unsigned long size) {
    std::signal(SIGXFSZ, SIG_IGN);
    SetLimit(RLIMIT_FSIZE, size);
}

void FaultPoints::GiveUpPrivilege() {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[2] = {};
    if (syscall(SYS_capget, &header, data) != 0) return;
    data[0].effective &= ~(1u << CAP_DAC_OVERRIDE);
    data[0].permitted &= ~(1u << CAP_DAC_OVERRIDE);
    syscall(SYS_capset, &header, data);
}

void FaultPoints::ForbidWriting(const std::string& folder) { chmod(folder.c_str(), 0555); }

void FaultPoints::FillDisk(const std::string& folder, unsigned long spare) {
    struct statvfs status;
    if (statvfs(folder.c_str(), &status) != 0) return;
    const unsigned long unused = status.f_bavail * status.f_frsize;
    std::ofstream filler(folder + "/filler", std::ios::binary);
    filler << std::string(unused > spare ? unused - spare : 0, 'x');
}

void FaultPoints::Die() {
    kill(getpid(), SIGKILL);
    std::abort();
}

}  // namespace zelfaults

using zelfaults::Deed;
using zelfaults::FileStep;
using zelfaults::FindNext;

// What stands before the functions of the system, for this program and the libraries that it is linked with.
#pragma GCC visibility push(default)
extern "C" {

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    return zelfaults::Open("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    return zelfaults::Open("open64", path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t size) {
    static auto* const next = FindNext<ssize_t(int, const void*, size_t)>("write");
    const FileStep step(Deed::kWrite, descriptor);
    if (step.Fails()) return -1;
    const ssize_t result = next(descriptor, bytes, step.IsHalved() ? size / 2 : size);
    step.Done();
    return result;
}

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t offset) {
    return zelfaults::WriteAt("pwrite", descriptor, bytes, size, offset);
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t size, off64_t offset) {
    return zelfaults::WriteAt("pwrite64", descriptor, bytes, size, offset);
}

int fsync(int descriptor) {
    static auto* const next = FindNext<int(int)>("fsync");
    const FileStep step(Deed::kSync, descriptor);
    if (step.Fails()) return -1;
    const int result = next(descriptor);
    step.Done();
    return result;
}

int rename(const char* from, const char* to) noexcept {
    static auto* const next = FindNext<int(const char*, const char*)>("rename");
    const FileStep step(Deed::kRename, to);
    if (step.Fails()) return -1;
    const int result = next(from, to);
    step.Done();
    return result;
}

int unlink(const char* path) noexcept {
    static auto* const next = FindNext<int(const char*)>("unlink");
    const FileStep step(Deed::kDelete, path);
    if (step.Fails()) return -1;
    const int result = next(path);
    step.Done();
    return result;
}

}  // extern "C"

void* operator new(std::size_t size) { return zelfaults::AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return zelfaults::AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return zelfaults::Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return zelfaults::Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
#pragma GCC visibility pop
