// An effect with parameters and channels, but none of the functions for them.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host) : Vst2Plugin(host, {"no_functions", 24, 1, 1, {"A"}}) {
        mEffect.setParameter = nullptr;
        mEffect.getParameter = nullptr;
        mEffect.process = nullptr;
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
