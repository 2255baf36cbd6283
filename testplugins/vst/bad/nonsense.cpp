// Claims impossible counts and fills text buffers with bytes that are no text and do not end.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

/// More than the interface's documents allow, as many real plug-ins write.
constexpr std::size_t kTooMuch = 1000;

class Nonsense : public Vst2Plugin {
public:
    explicit Nonsense(vst2::HostCallback host) : Vst2Plugin(host, {"", -1, -7, 0x7FFFFFFF}) {
        mEffect.parameterCount = 0x7FFFFFFF;
        mEffect.programCount = -5;
        mEffect.version = -1;
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        switch (operation) {
            case vst2::kGetEffectName:
                std::memset(pointer, 0xFF, kTooMuch);
                return -1;
            case vst2::kGetVendorText:
                std::memset(pointer, '\n', kTooMuch);
                return -1;
            case vst2::kGetCategory:
                return 0x7FFFFFFF;
            default:
                return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Nonsense(host))->GetEffect(); }
