// Asks its host on a thread of its own, all the time, from the first call to the last.
#include <atomic>
#include <thread>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Restless : public Vst2Plugin {
public:
    explicit Restless(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Restless", 0x5A526573, 2, 2}), mThread([this] { Ask(); }) {}
    ~Restless() override {
        mEnds = true;
        mThread.join();
    }

private:
    void Ask() {
        while (!mEnds) {
            for (const auto operation :
                 {vst2::kHostGetSampleRate, vst2::kHostGetBlockSize, vst2::kHostGetTime, vst2::kHostGetProcessLevel}) {
                mHost(&mEffect, operation, 0, 0, nullptr, 0.0f);
            }
            std::this_thread::yield();
        }
    }

    std::atomic<bool> mEnds{false};
    std::thread mThread;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Restless(host))->GetEffect(); }
