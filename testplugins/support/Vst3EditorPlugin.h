#pragma once

#include <cmath>
#include <memory>
#include <string>

#include <pluginterfaces/gui/iplugviewcontentscalesupport.h>

#include "support/Vst3Plugin.h"
#include "support/WindowType.h"

/// The common part of the VST3 test plug-ins with an editor: a controller, its views, and a list of the calls.
namespace zeltestplugins {

class Vst3EditorView;

/// What a controller and its views share.
struct Vst3EditorLog {
    std::string calls;
    Vst3EditorView* view = nullptr;  ///< the one that was made last, while it lives

    void Note(const std::string& call) { calls += (calls.empty() ? "" : " ") + call; }
    /// The calls since this was asked last.
    std::string TakeCalls() {
        std::string taken;
        taken.swap(calls);
        return taken;
    }
};

typedef std::shared_ptr<Vst3EditorLog> Vst3EditorLogPtr;

class Vst3EditorView : public IPlugView, public IPlugViewContentScaleSupport, private Vst3Counted {
public:
    Vst3EditorView(Vst3EditorLogPtr log, int width, int height) : mRect(0, 0, width, height), mLog(std::move(log)) {
        mLog->view = this;
        mLog->Note("made");
    }

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        return Find(id, object,
                    {{FUnknown_iid, static_cast<IPlugView*>(this)},
                     {IPlugView_iid, static_cast<IPlugView*>(this)},
                     {IPlugViewContentScaleSupport_iid, static_cast<IPlugViewContentScaleSupport*>(this)}});
    }
    uint32 PLUGIN_API addRef() override { return Add(); }
    uint32 PLUGIN_API release() override { return Drop(); }

    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) override {
        return std::strcmp(type, GetWindowType()) == 0 ? kResultTrue : kResultFalse;
    }
    tresult PLUGIN_API setFrame(IPlugFrame* frame) override {
        Note(frame != nullptr ? "frame" : "noframe");
        if (frame != nullptr) frame->addRef();
        if (mFrame != nullptr) mFrame->release();
        mFrame = frame;
        return kResultOk;
    }
    tresult PLUGIN_API attached(void* parent, FIDString type) override {
        Note("attached");
        return isPlatformTypeSupported(type) == kResultTrue && Open(parent) ? kResultTrue : kResultFalse;
    }
    tresult PLUGIN_API removed() override {
        Note("removed");
        Close();
        return kResultOk;
    }
    tresult PLUGIN_API getSize(ViewRect* size) override {
        *size = mRect;
        return kResultOk;
    }
    tresult PLUGIN_API onSize(ViewRect* size) override {
        Note("size." + std::to_string(size->getWidth()) + "x" + std::to_string(size->getHeight()));
        mRect = *size;
        return kResultOk;
    }
    tresult PLUGIN_API onFocus(TBool state) override {
        Note(state != 0 ? "focus" : "nofocus");
        return kResultFalse;
    }
    tresult PLUGIN_API onWheel(float) override { return kResultFalse; }
    /// Uses the key A and Escape.
    tresult PLUGIN_API onKeyDown(char16 key, int16 code, int16 modifiers) override {
        return Press("down", key, code, modifiers);
    }
    tresult PLUGIN_API onKeyUp(char16 key, int16 code, int16 modifiers) override {
        return Press("up", key, code, modifiers);
    }
    tresult PLUGIN_API canResize() override { return kResultFalse; }
    tresult PLUGIN_API checkSizeConstraint(ViewRect*) override { return kResultFalse; }
    tresult PLUGIN_API setContentScaleFactor(ScaleFactor factor) override {
        Note("scale." + std::to_string(std::lround(factor * 100.0f)));
        return kResultTrue;
    }

    /// What the host answers; -1 without a frame.
    int AskSize(int width, int height) {
        ViewRect rect(0, 0, width, height);
        return mFrame == nullptr ? -1 : mFrame->resizeView(this, &rect);
    }

protected:
    ~Vst3EditorView() override {
        Note("gone");
        if (mLog->view == this) mLog->view = nullptr;
        if (mFrame != nullptr) mFrame->release();
    }

    virtual bool Open(void*) { return true; }
    virtual void Close() {}

    void Note(const std::string& call) { mLog->Note(call); }

    ViewRect mRect;
    IPlugFrame* mFrame = nullptr;
    const Vst3EditorLogPtr mLog;

private:
    tresult Press(const char* what, char16 key, int16 code, int16 modifiers) {
        Note(std::string(what) + "." + std::to_string(key) + "." + std::to_string(code) + "." +
             std::to_string(modifiers));
        return key == 'a' || code == 6 ? kResultTrue : kResultFalse;
    }
};

class Vst3EditorController : public Vst3Controller {
public:
    explicit Vst3EditorController(const Vst3Facts& facts)
        : Vst3Controller(facts), mLog(std::make_shared<Vst3EditorLog>()) {
        for (std::size_t i = 0; i < mValues.Size(); ++i) mValues[i] = 0.0;
    }

    /// The values are this controller's own.
    tresult PLUGIN_API setComponentState(IBStream*) override { return kResultOk; }
    IPlugView* PLUGIN_API createView(FIDString name) override {
        return std::strcmp(name, Vst::ViewType::kEditor) == 0 ? MakeView() : nullptr;
    }
    tresult PLUGIN_API getParamStringByValue(Vst::ParamID id, Vst::ParamValue, Vst::String128 text) override {
        CopyText(text, 128, TellParameter(id).c_str());
        return kResultOk;
    }

protected:
    virtual IPlugView* MakeView() = 0;
    /// The text of a parameter's value.
    virtual std::string TellParameter(Vst::ParamID) { return mLog->TakeCalls(); }

    /// One of `count` steps that a parameter stands at.
    int GetStep(Vst::ParamID id, int count) {
        return std::min(static_cast<int>(mValues[id] * static_cast<double>(count)), count - 1);
    }

    const Vst3EditorLogPtr mLog;
};

template <typename Controller>
class Vst3EditorFactory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IEditController* MakeController(const Vst3Facts& facts) override { return new Controller(facts); }
};

}  // namespace zeltestplugins
