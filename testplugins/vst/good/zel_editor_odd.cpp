// An editor whose rectangle and whose answer to being opened are what the parameters say; mostly nothing sensible.
#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Odd : public Vst2EditorPlugin {
public:
    explicit Odd(vst2::HostCallback host)
        : Vst2EditorPlugin(
              host, {"Zel Editor Odd", 0x5A456F64, 2, 2, {"Rectangle", "Opens", "Editor", "Calls", "Host sizes"}}, 120,
              90) {
        mValues = {0.0f, 1.0f, 1.0f, 0.0f, 0.0f};
    }

protected:
    vst2::EditorRect* GetRect() override {
        switch (static_cast<int>(Value(0) * 8.0f + 0.5f)) {
            case 0:
                return Be(0, 0, 90, 120);
            case 1:
                return nullptr;
            case 2:
                return Be(50, 100, 10, 20);
            case 3:
                return Be(-32768, -32768, 32767, 32767);
            case 4:
                return Be(7, -5, 97, 115);
            case 5:
                return Be(0, 0, 90, 0);
            case 6:
                return mIsOpen ? Be(0, 0, 90, 120) : nullptr;
            case 7:
                return Be(0, 0, 90, static_cast<std::int16_t>(120 + mTurns));
            default:
                return Be(0, 0, 20000, 10);
        }
    }
    bool OpenEditor(void*) override {
        mIsOpen = true;
        return Value(1) >= 0.5f;
    }
    void CloseEditor() override { mIsOpen = false; }
    void IdleEditor() override { ++mTurns; }
    void SetParameter(std::int32_t index, float value) override {
        Vst2EditorPlugin::SetParameter(index, value);
        mEffect.flags = Value(2) >= 0.5f ? mEffect.flags | vst2::kHasEditor : mEffect.flags & ~vst2::kHasEditor;
    }
    std::string TellParameter(std::int32_t index) override {
        char ability[] = "sizeWindow";
        if (index == 4) return std::to_string(mHost(&mEffect, vst2::kHostCanDo, 0, 0, ability, 0.0f));
        return index == 3 ? TakeCalls() : std::string();
    }

private:
    vst2::EditorRect* Be(std::int16_t top, std::int16_t left, std::int16_t bottom, std::int16_t right) {
        mRect = {top, left, bottom, right};
        return &mRect;
    }

    bool mIsOpen = false;
    int mTurns = 0;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Odd(host))->GetEffect(); }
