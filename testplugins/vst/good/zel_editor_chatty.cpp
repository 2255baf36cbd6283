// An editor that asks for sizes from a thread of its own as fast as it can, from the effect's first to its last moment.
#include <atomic>
#include <thread>

#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Chatty : public Vst2EditorPlugin {
public:
    explicit Chatty(vst2::HostCallback host)
        : Vst2EditorPlugin(host, {"Zel Editor Chatty", 0x5A456368, 2, 2, {"Calls", "Granted"}}, 300, 200),
          mThread([this] { Chat(); }) {}
    ~Chatty() override {
        mIsOver = true;
        mThread.join();
    }

protected:
    bool OpenEditor(void*) override { return true; }
    std::string TellParameter(std::int32_t index) override {
        return index == 0 ? TakeCalls() : std::to_string(mGranted.load());
    }

private:
    void Chat() {
        for (int i = 0; !mIsOver; ++i) mGranted += AskSize(400 + i % 100, 300) != 0 ? 1 : 0;
    }

    std::atomic<bool> mIsOver{false};
    std::atomic<int> mGranted{0};
    std::thread mThread;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Chatty(host))->GetEffect(); }
