// An editor of two colours in a window of its own, which it draws when the run loop says that there are events. It has
// a timer, reads from a pipe, asks for another size by its parameters (at once, on another thread, or in the middle of
// being opened and closed) and uses the key A and Escape. Told to be untidy, it leaves its handlers behind and keeps
// the frame, by which it still asks for sizes when it is closed.
#include <thread>

#include <unistd.h>

#include "support/EditorWindow.h"
#include "support/Vst3EditorPlugin.h"

namespace {

using namespace zeltestplugins;

enum Parameter : Vst::ParamID { kSize, kSizeElsewhere, kCalls, kAnswer, kTicks, kReads, kInside, kUntidy };

constexpr int kWidth = 300;
constexpr int kHeight = 200;
constexpr int kInsideWidth = 333;
constexpr int kInsideHeight = 222;

/// When the view asks for a size by itself.
enum Inside { kNever, kInFrame, kInAttached, kInRemoved, kInsides };

struct Counts {
    int ticks = 0;
    int reads = 0;
    int answer = -1;
    Inside inside = kNever;
    bool isUntidy = false;
};

/// The frame of the untidy view that was closed last, kept until the module goes.
IPlugFrame* gKeptFrame = nullptr;

void KeepFrame(IPlugFrame* frame) {
    if (frame != nullptr) frame->addRef();
    if (gKeptFrame != nullptr) gKeptFrame->release();
    gKeptFrame = frame;
}

/// What the run loop calls. Counted, because the host may keep it.
class Handler : public Linux::IEventHandler, public Linux::ITimerHandler, private Vst3Counted {
public:
    Handler(std::shared_ptr<Counts> counts, EditorWindow& window) : mCounts(std::move(counts)), mWindow(window) {
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
        ++mCounts->ticks;
        const char byte = 't';
        if (write(mPipe[1], &byte, 1) != 1) std::abort();
    }
    void PLUGIN_API onFDIsSet(Linux::FileDescriptor descriptor) override {
        if (descriptor != mPipe[0]) {
            mWindow.HandleEvents();
            return;
        }
        char byte = 0;
        if (read(descriptor, &byte, 1) == 1 && byte == 't') ++mCounts->reads;
    }
    int GetDescriptor() const { return mPipe[0]; }

private:
    ~Handler() override {
        close(mPipe[0]);
        close(mPipe[1]);
    }

    std::shared_ptr<Counts> mCounts;
    EditorWindow& mWindow;
    int mPipe[2] = {-1, -1};
};

class View : public Vst3EditorView {
public:
    View(Vst3EditorLogPtr log, std::shared_ptr<Counts> counts)
        : Vst3EditorView(std::move(log), kWidth, kHeight), mCounts(std::move(counts)) {}

    tresult PLUGIN_API setFrame(IPlugFrame* frame) override {
        Vst3EditorView::setFrame(frame);
        AskInside(kInFrame);
        return kResultOk;
    }
    tresult PLUGIN_API onSize(ViewRect* size) override {
        Vst3EditorView::onSize(size);
        mWindow.Resize(size->getWidth(), size->getHeight());
        return kResultOk;
    }

protected:
    ~View() override { DropHandler(); }

    bool Open(void* parent) override {
        AskInside(kInAttached);
        // Without a display it is an editor without a window.
        mWindow.Open(parent, mRect.getWidth(), mRect.getHeight());
        mHandler = new Handler(mCounts, mWindow);
        mFrame->queryInterface(Linux::IRunLoop_iid, reinterpret_cast<void**>(&mRunLoop));
        mRunLoop->registerTimer(mHandler, 5);
        mRunLoop->registerEventHandler(mHandler, mHandler->GetDescriptor());
        if (mWindow.GetDescriptor() >= 0) mRunLoop->registerEventHandler(mHandler, mWindow.GetDescriptor());
        return true;
    }
    void Close() override {
        if (mCounts->isUntidy) {
            KeepFrame(mFrame);
        } else {
            mRunLoop->unregisterTimer(mHandler);
            mRunLoop->unregisterEventHandler(mHandler);
            DropHandler();
        }
        mRunLoop->release();
        mRunLoop = nullptr;
        mWindow.Close();
        AskInside(kInRemoved);
    }

private:
    void AskInside(Inside now) {
        if (mFrame != nullptr && mCounts->inside == now) mCounts->answer = AskSize(kInsideWidth, kInsideHeight);
    }
    void DropHandler() {
        if (mHandler != nullptr) mHandler->release();
        mHandler = nullptr;
    }

    std::shared_ptr<Counts> mCounts;
    EditorWindow mWindow;
    Handler* mHandler = nullptr;
    Linux::IRunLoop* mRunLoop = nullptr;
};

class Controller : public Vst3EditorController {
public:
    using Vst3EditorController::Vst3EditorController;

    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue value) override {
        const tresult result = Vst3EditorController::setParamNormalized(id, value);
        mCounts->inside = static_cast<Inside>(GetStep(kInside, kInsides));
        mCounts->isUntidy = mValues[kUntidy] > 0.5;
        if (id != kSize && id != kSizeElsewhere) return result;
        const auto ask = [this, value] { mCounts->answer = Ask(Scale(kWidth, value), Scale(kHeight, value)); };
        if (id == kSize) {
            ask();
        } else {
            std::thread(ask).join();
        }
        return result;
    }

protected:
    IPlugView* MakeView() override { return new View(mLog, mCounts); }
    std::string TellParameter(Vst::ParamID id) override {
        switch (id) {
            case kCalls:
                return mLog->TakeCalls();
            case kAnswer:
                return std::to_string(mCounts->answer);
            case kTicks:
                return std::to_string(mCounts->ticks);
            case kReads:
                return std::to_string(mCounts->reads);
            default:
                return std::to_string(mValues[id]);
        }
    }

private:
    int Ask(int width, int height) const {
        if (mLog->view != nullptr) return mLog->view->AskSize(width, height);
        ViewRect rect(0, 0, width, height);
        return gKeptFrame == nullptr ? -1 : gKeptFrame->resizeView(nullptr, &rect);
    }
    static int Scale(int extent, double value) { return static_cast<int>(std::lround(extent * (1.0 + value))); }

    std::shared_ptr<Counts> mCounts = std::make_shared<Counts>();
};

}  // namespace

extern "C" SMTG_EXPORT_SYMBOL bool ModuleEntry(void*) { return true; }
extern "C" SMTG_EXPORT_SYMBOL bool ModuleExit() {
    KeepFrame(nullptr);
    return true;
}

ZEL_VST3_FACTORY {
    static Vst3EditorFactory<Controller> factory(
        {{.name = "Zel Editor 3",
          .id = MakeId(60),
          .parameters = {"Size", "Size elsewhere", "Calls", "Answer", "Ticks", "Reads", "Inside", "Untidy"},
          .controllerId = MakeId(61)}});
    return &factory;
}
