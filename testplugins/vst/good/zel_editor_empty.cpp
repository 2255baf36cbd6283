// An editor without area.
#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Empty : public Vst2EditorPlugin {
public:
    explicit Empty(vst2::HostCallback host)
        : Vst2EditorPlugin(host, {"Zel Editor Empty", 0x5A45656D, 2, 2, {"Calls"}}, 0, 0) {}

protected:
    bool OpenEditor(void*) override { return true; }
    std::string TellParameter(std::int32_t) override { return TakeCalls(); }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Empty(host))->GetEffect(); }
