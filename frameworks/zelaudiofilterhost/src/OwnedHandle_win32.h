#pragma once

#include <cstdint>

#include <windows.h>

namespace zelaudiofilterhost {

/// A handle that is closed with the object.
class OwnedHandle {
public:
    explicit OwnedHandle(HANDLE handle) : mHandle(handle) {}
    ~OwnedHandle() {
        if (IsOpen()) CloseHandle(mHandle);
    }
    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;

    bool IsOpen() const { return mHandle != INVALID_HANDLE_VALUE && mHandle != nullptr; }
    HANDLE Get() const { return mHandle; }

private:
    const HANDLE mHandle;
};

/// For those who look at a file and keep nobody from anything.
constexpr DWORD kShareEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// A number that the system gives in two.
inline std::uint64_t JoinHalves(DWORD high, DWORD low) { return (std::uint64_t(high) << 32) | low; }

/// Whether the name is a device's ("NUL", "COM1"): opening one can do things.
inline bool IsFileOnDisk(HANDLE file) { return GetFileType(file) == FILE_TYPE_DISK; }

}  // namespace zelaudiofilterhost
