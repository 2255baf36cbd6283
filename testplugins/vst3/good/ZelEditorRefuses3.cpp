// An editor that does not open. By its parameter it makes no view at all, or one that knows no window of this platform.
#include "support/Vst3EditorPlugin.h"

namespace {

using namespace zeltestplugins;

enum Parameter : Vst::ParamID { kCalls, kWay };
enum Way { kRefusesToOpen, kMakesNoView, kKnowsNoWindow, kWays };

class View : public Vst3EditorView {
public:
    View(Vst3EditorLogPtr log, Way way) : Vst3EditorView(std::move(log), 120, 90), mWay(way) {}

    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) override {
        return mWay == kKnowsNoWindow ? kResultFalse : Vst3EditorView::isPlatformTypeSupported(type);
    }

protected:
    bool Open(void*) override { return false; }

private:
    Way mWay;
};

class Controller : public Vst3EditorController {
public:
    using Vst3EditorController::Vst3EditorController;

protected:
    IPlugView* MakeView() override {
        const Way way = static_cast<Way>(GetStep(kWay, kWays));
        return way == kMakesNoView ? nullptr : new View(mLog, way);
    }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Vst3EditorFactory<Controller> factory({{.name = "Zel Editor Refuses 3",
                                                   .id = MakeId(64),
                                                   .parameters = {"Calls", "Way"},
                                                   .controllerId = MakeId(65)}});
    return &factory;
}
