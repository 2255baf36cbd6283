// An editor without a window that answers each size that it is given with the wish for another one, and says with every
// question that it has another size than before.
#include "support/Vst3EditorPlugin.h"

namespace {

using namespace zeltestplugins;

enum Parameter : Vst::ParamID { kCalls, kGiven, kDepth, kKick, kSteady };

struct Counts {
    int given = 0;
    int depth = 0;
    int deepest = 0;
    bool isSteady = false;  ///< only answers sizes, and says the truth about its own
};

class View : public Vst3EditorView {
public:
    View(Vst3EditorLogPtr log, std::shared_ptr<Counts> counts)
        : Vst3EditorView(std::move(log), 120, 90), mCounts(std::move(counts)) {}

    tresult PLUGIN_API getSize(ViewRect* size) override {
        if (!mCounts->isSteady) mRect.right = 100 + (mRect.right + 7) % 256;
        return Vst3EditorView::getSize(size);
    }
    tresult PLUGIN_API onSize(ViewRect* size) override {
        mRect = *size;
        ++mCounts->given;
        mCounts->deepest = std::max(mCounts->deepest, ++mCounts->depth);
        Kick();
        --mCounts->depth;
        return kResultOk;
    }
    void Kick() { AskSize(100 + (mRect.right + 13) % 256, 200 + (mRect.bottom + 17) % 256); }

protected:
    bool Open(void*) override {
        Kick();
        return true;
    }
    void Close() override { Kick(); }

private:
    std::shared_ptr<Counts> mCounts;
};

class Controller : public Vst3EditorController {
public:
    using Vst3EditorController::Vst3EditorController;

    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue value) override {
        Vst3EditorController::setParamNormalized(id, value);
        mCounts->isSteady = mValues[kSteady] > 0.5;
        if (id == kKick && mLog->view != nullptr) static_cast<View*>(mLog->view)->Kick();
        return kResultOk;
    }

protected:
    IPlugView* MakeView() override { return new View(mLog, mCounts); }
    std::string TellParameter(Vst::ParamID id) override {
        if (id == kGiven) return std::to_string(mCounts->given);
        return id == kDepth ? std::to_string(mCounts->deepest) : mLog->TakeCalls();
    }

private:
    std::shared_ptr<Counts> mCounts = std::make_shared<Counts>();
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Vst3EditorFactory<Controller> factory({{.name = "Zel Editor Restless 3",
                                                   .id = MakeId(62),
                                                   .parameters = {"Calls", "Given", "Depth", "Kick", "Steady"},
                                                   .controllerId = MakeId(63)}});
    return &factory;
}
