// Says a length of its block of bytes that is none, another one for each of its parameters that is turned up: below 0,
// far beyond all memory, a little too much, with nothing there. With all of them down it has none.
#include <limits>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Lies : public Vst2Plugin {
public:
    explicit Lies(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Chunk Lies", 0x5A436C69, 2, 2, {"Negative", "Endless", "Too Much", "Nothing"}}) {
        mEffect.flags |= vst2::kProgramChunks;
        mValues = {0.0f, 0.0f, 0.0f, 0.0f};
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kGetChunk) return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        *static_cast<void**>(pointer) = Value(3) > 0.5f ? nullptr : &mEffect;
        if (Value(0) > 0.5f) return -1;
        if (Value(1) > 0.5f) return std::numeric_limits<std::intptr_t>::max();
        if (Value(2) > 0.5f) return (std::intptr_t(64) << 20) + 1;
        return Value(3) > 0.5f ? 16 : 0;
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Lies(host))->GetEffect(); }
