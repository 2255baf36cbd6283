#include "HandlerGate.h"

namespace zelmarshal {

HandlerGate::Pass::Pass(HandlerGate& gate) : mGate(gate) {
    const std::lock_guard<std::mutex> lock(mGate.mMutex);
    if (mGate.mShut) return;
    mInside = true;
    ++mGate.mInside;
    mGate.mThread = std::this_thread::get_id();
}

HandlerGate::Pass::~Pass() {
    if (!mInside) return;
    const std::lock_guard<std::mutex> lock(mGate.mMutex);
    if (--mGate.mInside == 0) mGate.mLeft.notify_all();
}

void HandlerGate::ShutAndWait() {
    std::unique_lock<std::mutex> lock(mMutex);
    mShut = true;
    if (mInside > 0 && mThread == std::this_thread::get_id()) return;
    mLeft.wait(lock, [this] { return mInside == 0; });
}

bool HandlerGate::IsShut() const {
    const std::lock_guard<std::mutex> lock(mMutex);
    return mShut;
}

}  // namespace zelmarshal
