#include <cstdio>

#include <windows.h>

#include <io.h>

#include "OutputGuard.h"

namespace tessaly {

namespace {

/// Has the system's own output, which plug-ins may write to as well, be where the C library's is.
void FollowOutput() {
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stdout)));
    if (handle != INVALID_HANDLE_VALUE) SetStdHandle(STD_OUTPUT_HANDLE, handle);
}

}  // namespace

OutputGuard::OutputGuard() : mOutput(-1) {
    std::fflush(stdout);
    // There are none in a program that has no console.
    if (_fileno(stdout) < 0 || _fileno(stderr) < 0) return;
    mOutput = _dup(_fileno(stdout));
    if (mOutput < 0) return;
    // No program that is started meanwhile shall keep it open.
    SetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(mOutput)), HANDLE_FLAG_INHERIT, 0);
    _dup2(_fileno(stderr), _fileno(stdout));
    FollowOutput();
}

OutputGuard::~OutputGuard() {
    if (mOutput < 0) return;
    // What plug-ins left in the buffer must not come out behind the result.
    std::fflush(stdout);
    _dup2(mOutput, _fileno(stdout));
    _close(mOutput);
    FollowOutput();
}

}  // namespace tessaly
