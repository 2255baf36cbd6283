// An editor without a window that throws where its parameter says. The call is noted before it throws.
#include <stdexcept>

#include "support/Vst3EditorPlugin.h"

namespace {

using namespace zeltestplugins;

enum Parameter : Vst::ParamID { kCalls, kWhere, kSize };
enum Where {
    kNowhere,
    kMaking,
    kPlatform,
    kFrame,
    kScale,
    kGetSize,
    kAttached,
    kOnSize,
    kFocus,
    kKey,
    kRemoved,
    kTimer,
    kWheres
};

class View : public Vst3EditorView, public Linux::ITimerHandler {
public:
    View(Vst3EditorLogPtr log, const Where& where) : Vst3EditorView(std::move(log), 120, 90), mWhere(where) {}

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        return Vst3EditorView::queryInterface(id, object);
    }
    uint32 PLUGIN_API addRef() override { return Vst3EditorView::addRef(); }
    uint32 PLUGIN_API release() override { return Vst3EditorView::release(); }

    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) override {
        return ThrowIn(kPlatform, Vst3EditorView::isPlatformTypeSupported(type));
    }
    tresult PLUGIN_API setFrame(IPlugFrame* frame) override { return ThrowIn(kFrame, Vst3EditorView::setFrame(frame)); }
    tresult PLUGIN_API attached(void* parent, FIDString type) override {
        return ThrowIn(kAttached, Vst3EditorView::attached(parent, type));
    }
    tresult PLUGIN_API removed() override { return ThrowIn(kRemoved, Vst3EditorView::removed()); }
    tresult PLUGIN_API getSize(ViewRect* size) override { return ThrowIn(kGetSize, Vst3EditorView::getSize(size)); }
    tresult PLUGIN_API onSize(ViewRect* size) override { return ThrowIn(kOnSize, Vst3EditorView::onSize(size)); }
    tresult PLUGIN_API onFocus(TBool state) override { return ThrowIn(kFocus, Vst3EditorView::onFocus(state)); }
    tresult PLUGIN_API onKeyDown(char16 key, int16 code, int16 modifiers) override {
        return ThrowIn(kKey, Vst3EditorView::onKeyDown(key, code, modifiers));
    }
    tresult PLUGIN_API setContentScaleFactor(ScaleFactor factor) override {
        return ThrowIn(kScale, Vst3EditorView::setContentScaleFactor(factor));
    }
    void PLUGIN_API onTimer() override {
        Note("tick");
        ThrowIn(kTimer, kResultOk);
    }

protected:
    /// The timer stays when the view is removed, and holds the view.
    bool Open(void*) override {
        Linux::IRunLoop* loop = nullptr;
        if (mFrame == nullptr ||
            mFrame->queryInterface(Linux::IRunLoop_iid, reinterpret_cast<void**>(&loop)) != kResultOk)
            return true;
        loop->registerTimer(this, 4);
        loop->release();
        return true;
    }

private:
    tresult ThrowIn(Where here, tresult result) const {
        if (mWhere == here) throw std::runtime_error("an editor's");
        return result;
    }

    const Where& mWhere;  ///< the controller's
};

class Controller : public Vst3EditorController {
public:
    using Vst3EditorController::Vst3EditorController;

    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue value) override {
        const tresult result = Vst3EditorController::setParamNormalized(id, value);
        mWhere = static_cast<Where>(GetStep(kWhere, kWheres));
        if (id == kSize && mLog->view != nullptr) mLog->view->AskSize(240, 180);
        return result;
    }

protected:
    IPlugView* MakeView() override {
        if (mWhere == kMaking) throw std::runtime_error("an editor's");
        return new View(mLog, mWhere);
    }

private:
    Where mWhere = kNowhere;
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Vst3EditorFactory<Controller> factory({{.name = "Zel Editor Throws 3",
                                                   .id = MakeId(66),
                                                   .parameters = {"Calls", "Where", "Size"},
                                                   .controllerId = MakeId(67)}});
    return &factory;
}
