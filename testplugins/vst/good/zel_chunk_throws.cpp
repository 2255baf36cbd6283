// Lets an exception out when it is given its block of bytes, and when it is asked for it with its parameter turned up.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Throws : public Vst2Plugin {
public:
    explicit Throws(vst2::HostCallback host) : Vst2Plugin(host, {"Zel Chunk Throws", 0x5A437468, 2, 2, {"Throws"}}) {
        mEffect.flags |= vst2::kProgramChunks;
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kSetChunk || (operation == vst2::kGetChunk && Value(0) > 0.5f)) throw 7;
        if (operation != vst2::kGetChunk) return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        *static_cast<void**>(pointer) = mValues.data();
        return sizeof(float);
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Throws(host))->GetEffect(); }
