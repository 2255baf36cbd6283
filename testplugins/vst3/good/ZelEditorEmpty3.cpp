// An editor without a window and without an area. By its parameters it has rectangles that make no sense, and asks for
// such sizes.
#include <limits>

#include "support/Vst3EditorPlugin.h"

namespace {

using namespace zeltestplugins;

enum Parameter : Vst::ParamID { kCalls, kRectangle, kAnswer, kAsk };

constexpr int32 kFar = std::numeric_limits<int32>::max();
constexpr int32 kNear = std::numeric_limits<int32>::min();

const ViewRect kRectangles[] = {
    {0, 0, 0, 0},     {10, 20, 5, 15}, {0, 0, kFar, kFar},  {kNear, kNear, kFar, kFar}, {kFar, kFar, kNear, kNear},
    {-5, 7, 115, 97}, {0, 0, 10, 0},   {0, 0, 16384, 16385}};
constexpr int kCount = static_cast<int>(std::size(kRectangles));
/// Says that it does not know.
constexpr int kUnknown = kCount;

class View : public Vst3EditorView {
public:
    View(Vst3EditorLogPtr log, const int& rectangle) : Vst3EditorView(std::move(log), 0, 0), mRectangle(rectangle) {}

    tresult PLUGIN_API getSize(ViewRect* size) override {
        *size = mRectangle == kUnknown ? ViewRect(0, 0, 120, 90) : kRectangles[mRectangle];
        return mRectangle == kUnknown ? kResultFalse : kResultOk;
    }
    int Ask() {
        ViewRect rect = kRectangles[mRectangle];
        return mFrame == nullptr ? -1 : mFrame->resizeView(this, &rect);
    }
    int AskNothing() { return mFrame == nullptr ? -1 : mFrame->resizeView(nullptr, nullptr); }

private:
    const int& mRectangle;  ///< the controller's
};

class Controller : public Vst3EditorController {
public:
    using Vst3EditorController::Vst3EditorController;

    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue value) override {
        const tresult result = Vst3EditorController::setParamNormalized(id, value);
        mRectangle = GetStep(kRectangle, kCount + 1);
        if (id != kAsk || mLog->view == nullptr) return result;
        View* const view = static_cast<View*>(mLog->view);
        mAnswer = mRectangle == kUnknown ? view->AskNothing() : view->Ask();
        return result;
    }

protected:
    IPlugView* MakeView() override { return new View(mLog, mRectangle); }
    std::string TellParameter(Vst::ParamID id) override {
        return id == kAnswer ? std::to_string(mAnswer) : mLog->TakeCalls();
    }

private:
    int mRectangle = 0;
    int mAnswer = -1;
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Vst3EditorFactory<Controller> factory({{.name = "Zel Editor Empty 3",
                                                   .id = MakeId(68),
                                                   .parameters = {"Calls", "Rectangle", "Answer", "Ask"},
                                                   .controllerId = MakeId(69)}});
    return &factory;
}
