// An editor without a window that runs the host's event loop where its parameter says: as others do that show a dialog
// of their own in the middle of a call.
#include "support/HostLoop.h"
#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Modal : public Vst2EditorPlugin {
public:
    explicit Modal(vst2::HostCallback host)
        : Vst2EditorPlugin(host, {"Zel Editor Modal", 0x5A456D6F, 2, 2, {"Where", "Calls", "Answer"}}, 120, 90) {}

protected:
    vst2::EditorRect* GetRect() override {
        RunIf(kRect, "rect");
        return &mRect;
    }
    bool OpenEditor(void*) override {
        mAnswer = AskSize(150, 100);
        RunIf(kOpen, "opened");
        return true;
    }
    void CloseEditor() override { RunIf(kClose, "closed"); }
    std::string TellParameter(std::int32_t index) override {
        return index == 1 ? TakeCalls() : std::to_string(mAnswer);
    }

private:
    enum Place { kNowhere, kRect, kOpen, kClose };
    static constexpr float kPlaces = 4.0f;

    /// Once for each time that it is told to.
    void RunIf(Place place, const char* end) {
        if (static_cast<int>(Value(0) * kPlaces) != place) return;
        mValues[0] = 0.0f;
        RunHostLoop();
        Note(end);
    }

    std::intptr_t mAnswer = -1;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Modal(host))->GetEffect(); }
