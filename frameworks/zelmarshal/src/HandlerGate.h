#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace zelmarshal {

/// Lets the owner of some handlers go without one of them running afterwards. Handlers run inside a Pass; ShutAndWait
/// lets nobody in any more and waits for who is inside, unless that is the caller itself.
class HandlerGate {
public:
    /// One stay inside; false when the gate was shut already.
    class Pass {
    public:
        explicit Pass(HandlerGate& gate);
        ~Pass();
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;
        explicit operator bool() const { return mInside; }

    private:
        HandlerGate& mGate;
        bool mInside = false;
    };

    void ShutAndWait();
    bool IsShut() const;

private:
    mutable std::mutex mMutex;
    std::condition_variable mLeft;
    std::thread::id mThread;  // of those inside; handlers of one session share theirs
    int mInside = 0;
    bool mShut = false;
};

}  // namespace zelmarshal
