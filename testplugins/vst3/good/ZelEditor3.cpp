// An editor of two colours in a window of its own, which it draws when the loop says that there are events. It has a
// timer, sends itself messages, asks for another size by its parameters (at once, on another thread, or in the middle
// of being opened and closed) and uses the key A and Escape. Told to be untidy, it leaves its handlers behind and keeps
// the frame, by which it still asks for sizes when it is closed.
#include <thread>

#include "support/EditorPulse.h"
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
    bool Open(void* parent) override {
        AskInside(kInAttached);
        // Without a display it is an editor without a window.
        mWindow.Open(parent, mRect.getWidth(), mRect.getHeight());
        mPulse = std::make_unique<EditorPulse>(
            *mFrame, mWindow, nullptr, [counts = mCounts] { ++counts->ticks; },
            [counts = mCounts] { ++counts->reads; });
        return true;
    }
    void Close() override {
        if (mCounts->isUntidy) {
            KeepFrame(mFrame);
        } else {
            mPulse->Stop();
        }
        mPulse.reset();
        mWindow.Close();
        AskInside(kInRemoved);
    }

private:
    void AskInside(Inside now) {
        if (mFrame != nullptr && mCounts->inside == now) mCounts->answer = AskSize(kInsideWidth, kInsideHeight);
    }

    std::shared_ptr<Counts> mCounts;
    EditorWindow mWindow;
    std::unique_ptr<EditorPulse> mPulse;
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

ZEL_VST3_MODULE_WITH(true, (KeepFrame(nullptr), true))

ZEL_VST3_FACTORY {
    static Vst3EditorFactory<Controller> factory(
        {{.name = "Zel Editor 3",
          .id = MakeId(60),
          .parameters = {"Size", "Size elsewhere", "Calls", "Answer", "Ticks", "Reads", "Inside", "Untidy"},
          .controllerId = MakeId(61)}});
    return &factory;
}
