#include "support/EditorPulse.h"

#include <cstdlib>
#include <utility>

#include <unistd.h>

#include "support/EditorWindow.h"
#include "support/Vst3Plugin.h"

namespace zeltestplugins {

namespace {

/// What the run loop calls. Counted, because the host may keep it.
class Handler : public Linux::IEventHandler, public Linux::ITimerHandler, private Vst3Counted {
public:
    Handler(EditorWindow& window, FUnknown* owner, std::function<void()> onTick, std::function<void()> onRead)
        : mWindow(window), mOwner(owner), mOnTick(std::move(onTick)), mOnRead(std::move(onRead)) {
        if (mOwner != nullptr) mOwner->addRef();
        if (pipe(mPipe) != 0) std::abort();
    }

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        return Find(id, object,
                    {{FUnknown_iid, static_cast<Linux::IEventHandler*>(this)},
                     {Linux::IEventHandler_iid, static_cast<Linux::IEventHandler*>(this)},
                     {Linux::ITimerHandler_iid, static_cast<Linux::ITimerHandler*>(this)}});
    }
    uint32 PLUGIN_API addRef() override { return Add(); }
    uint32 PLUGIN_API release() override { return Drop(); }

    void PLUGIN_API onTimer() override {
        mOnTick();
        const char byte = 't';
        if (write(mPipe[1], &byte, 1) != 1) std::abort();
    }
    void PLUGIN_API onFDIsSet(Linux::FileDescriptor descriptor) override {
        if (descriptor != mPipe[0]) {
            mWindow.HandleEvents();
            return;
        }
        char byte = 0;
        if (read(descriptor, &byte, 1) == 1 && byte == 't') mOnRead();
    }
    int GetDescriptor() const { return mPipe[0]; }

private:
    ~Handler() override {
        close(mPipe[0]);
        close(mPipe[1]);
        if (mOwner != nullptr) mOwner->release();
    }

    EditorWindow& mWindow;
    FUnknown* const mOwner;
    const std::function<void()> mOnTick;
    const std::function<void()> mOnRead;
    int mPipe[2] = {-1, -1};
};

}  // namespace

class EditorPulse::Platform {
public:
    Platform(IPlugFrame& frame, EditorWindow& window, FUnknown* owner, std::function<void()> onTick,
             std::function<void()> onRead) {
        if (frame.queryInterface(Linux::IRunLoop_iid, reinterpret_cast<void**>(&mRunLoop)) != kResultOk) return;
        mHandler = new Handler(window, owner, std::move(onTick), std::move(onRead));
        mRunLoop->registerTimer(mHandler, 5);
        mRunLoop->registerEventHandler(mHandler, mHandler->GetDescriptor());
        if (window.GetDescriptor() >= 0) mRunLoop->registerEventHandler(mHandler, window.GetDescriptor());
    }
    ~Platform() {
        if (mRunLoop == nullptr) return;
        mRunLoop->release();
        mHandler->release();
    }
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    void Stop() {
        if (mRunLoop == nullptr) return;
        mRunLoop->unregisterTimer(mHandler);
        mRunLoop->unregisterEventHandler(mHandler);
    }

private:
    Handler* mHandler = nullptr;
    Linux::IRunLoop* mRunLoop = nullptr;
};

EditorPulse::EditorPulse(IPlugFrame& frame, EditorWindow& window, FUnknown* owner, std::function<void()> onTick,
                         std::function<void()> onRead)
    : mPlatform(std::make_unique<Platform>(frame, window, owner, std::move(onTick), std::move(onRead))) {}

EditorPulse::~EditorPulse() = default;

void EditorPulse::Stop() { mPlatform->Stop(); }

}  // namespace zeltestplugins
