// An editor without a window that throws where its parameter says. The call is noted before it throws.
#include <stdexcept>

#include "support/EditorPulse.h"
#include "support/EditorWindow.h"
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

class View : public Vst3EditorView {
public:
    View(Vst3EditorLogPtr log, const Where& where) : Vst3EditorView(std::move(log), 120, 90), mWhere(where) {}

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

protected:
    bool Open(void*) override {
        if (mFrame == nullptr) return true;
        mPulse = std::make_unique<EditorPulse>(
            *mFrame, mWindow, static_cast<IPlugView*>(this), [this] { Tick(); }, [] {});
        return true;
    }
    /// Where the host runs the timer, it stays, and holds the view.
    void Close() override { mPulse.reset(); }

private:
    void Tick() {
        Note("tick");
        ThrowIn(kTimer, kResultOk);
    }
    tresult ThrowIn(Where here, tresult result) const {
        if (mWhere == here) throw std::runtime_error("an editor's");
        return result;
    }

    const Where& mWhere;   ///< the controller's
    EditorWindow mWindow;  ///< never open
    std::unique_ptr<EditorPulse> mPulse;
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
