// An editor without a window that runs the host's event loop where its parameter says: as others do that show a dialog
// of their own in the middle of a call.
#include "support/HostLoop.h"
#include "support/Vst3EditorPlugin.h"

namespace {

using namespace zeltestplugins;

enum Parameter : Vst::ParamID { kCalls, kWhere };
enum Where { kNowhere, kMaking, kFrame, kAttached, kRemoved, kWheres };

class Controller;

class View : public Vst3EditorView {
public:
    View(Vst3EditorLogPtr log, Controller& controller)
        : Vst3EditorView(std::move(log), 120, 90), mController(controller) {}

    tresult PLUGIN_API setFrame(IPlugFrame* frame) override;

protected:
    bool Open(void*) override;
    void Close() override;

private:
    Controller& mController;  ///< outlives its views
};

class Controller : public Vst3EditorController {
public:
    using Vst3EditorController::Vst3EditorController;

    /// Once for each time that it is told to.
    void RunIf(Where where, const char* end) {
        if (GetStep(kWhere, kWheres) != where) return;
        mValues[kWhere] = 0.0;
        RunHostLoop();
        mLog->Note(end);
    }

protected:
    IPlugView* MakeView() override {
        RunIf(kMaking, "making");
        return new View(mLog, *this);
    }
};

tresult PLUGIN_API View::setFrame(IPlugFrame* frame) {
    Vst3EditorView::setFrame(frame);
    if (frame != nullptr) mController.RunIf(kFrame, "framed");
    return kResultOk;
}

bool View::Open(void*) {
    AskSize(150, 100);
    mController.RunIf(kAttached, "opened");
    return true;
}

void View::Close() { mController.RunIf(kRemoved, "closed"); }

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Vst3EditorFactory<Controller> factory({{.name = "Zel Editor Modal 3",
                                                   .id = MakeId(80),
                                                   .parameters = {"Calls", "Where"},
                                                   .controllerId = MakeId(81)}});
    return &factory;
}
