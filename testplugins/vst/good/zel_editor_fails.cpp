// An editor that does not open and has no rectangle.
#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Fails : public Vst2EditorPlugin {
public:
    explicit Fails(vst2::HostCallback host)
        : Vst2EditorPlugin(host, {"Zel Editor Fails", 0x5A456661, 2, 2, {"Calls"}}, 0, 0) {}

protected:
    vst2::EditorRect* GetRect() override { return nullptr; }
    bool OpenEditor(void*) override { return false; }
    void IdleEditor() override { Note("idle"); }
    std::string TellParameter(std::int32_t) override { return TakeCalls(); }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Fails(host))->GetEffect(); }
