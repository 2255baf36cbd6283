// An editor that throws: when it is opened, or where the parameter says.
#include <stdexcept>

#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Throws : public Vst2EditorPlugin {
public:
    explicit Throws(vst2::HostCallback host)
        : Vst2EditorPlugin(host, {"Zel Editor Throws", 0x5A457468, 2, 2, {"Where", "Calls"}}, 120, 90) {}

protected:
    vst2::EditorRect* GetRect() override {
        ThrowIf(kRect);
        return &mRect;
    }
    bool OpenEditor(void*) override {
        ThrowIf(kOpen);
        return true;
    }
    void CloseEditor() override { ThrowIf(kClose); }
    void IdleEditor() override {
        Note("idle");
        ThrowIf(kIdle);
    }
    bool PressKey(bool isDown, std::int32_t character, std::intptr_t virtualKey, int modifiers) override {
        Vst2EditorPlugin::PressKey(isDown, character, virtualKey, modifiers);
        ThrowIf(kKey);
        return true;
    }
    std::string TellParameter(std::int32_t index) override { return index == 1 ? TakeCalls() : std::string(); }

private:
    enum Place { kOpen, kRect, kIdle, kClose, kKey };
    static constexpr float kPlaces = 4.0f;

    void ThrowIf(Place place) const {
        if (static_cast<int>(Value(0) * kPlaces + 0.5f) == place) throw std::runtime_error("an editor's exception");
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Throws(host))->GetEffect(); }
