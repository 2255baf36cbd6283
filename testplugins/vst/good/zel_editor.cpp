// An editor of two colours in a window of its own. It uses the keys A and Escape, counts its turns, and becomes larger
// by a parameter, in or out of step with its rectangle.
#include <cmath>
#include <thread>

#include "support/EditorWindow.h"
#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Editor : public Vst2EditorPlugin {
public:
    explicit Editor(vst2::HostCallback host)
        : Vst2EditorPlugin(host,
                           {"Zel Editor", 0x5A456474, 2, 2, {"Size", "Turns", "Calls", "Answer", "Size elsewhere"}},
                           kWidth, kHeight) {}

protected:
    bool OpenEditor(void* parent) override { return mWindow.Open(parent, mRect.right, mRect.bottom); }
    void CloseEditor() override { mWindow.Close(); }
    void IdleEditor() override {
        mTurns = (mTurns + 1) % kMaxTurns;
        mWindow.HandleEvents();
    }

    void SetParameter(std::int32_t index, float value) override {
        Vst2EditorPlugin::SetParameter(index, value);
        if (index != kSize && index != kSizeElsewhere) return;
        const int width = Scale(kWidth, value);
        const int height = Scale(kHeight, value);
        if (index == kSize) {
            SetRect(width, height);
            mWindow.Resize(width, height);
            mAnswer = AskSize(width, height);
        } else {
            // The rectangle stays as it was: many do not keep it up to date.
            std::thread([&] { mAnswer = AskSize(width, height); }).join();
        }
    }

    float GetParameter(std::int32_t index) override {
        if (index == kTurns) return static_cast<float>(mTurns) / kMaxTurns;
        return Vst2EditorPlugin::GetParameter(index);
    }

    std::string TellParameter(std::int32_t index) override {
        switch (index) {
            case kTurns:
                return std::to_string(mTurns);
            case kCalls:
                return TakeCalls();
            case kAnswer:
                return std::to_string(mAnswer);
            default:
                return std::to_string(Value(static_cast<std::size_t>(index)));
        }
    }

private:
    enum Parameter { kSize, kTurns, kCalls, kAnswer, kSizeElsewhere };
    static constexpr int kWidth = 300;
    static constexpr int kHeight = 200;
    static constexpr int kMaxTurns = 1000;

    static int Scale(int extent, float value) { return static_cast<int>(std::lround(float(extent) * (1.0f + value))); }

    EditorWindow mWindow;
    int mTurns = 0;
    std::intptr_t mAnswer = -1;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Editor(host))->GetEffect(); }
