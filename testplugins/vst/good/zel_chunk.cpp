// Keeps more than its parameters: how often it was turned, which its sound tells, is in its block of bytes alone; so is
// which of its three programs it is in.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr float kStep = 1.0f / 64.0f;

class Chunk : public Vst2Plugin {
public:
    explicit Chunk(vst2::HostCallback host) : Vst2Plugin(host, {"Zel Chunk", 0x5A436875, 2, 2, {"Gain", "Other"}}) {
        mEffect.flags |= vst2::kProgramChunks;
        mEffect.programCount = 3;
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        switch (operation) {
            case vst2::kSetProgram:
                mKept.program = static_cast<std::int32_t>(value);
                return 0;
            case vst2::kGetProgram:
                return mKept.program;
            case vst2::kGetChunk:
                std::copy_n(mValues.begin(), 2, mKept.values);
                *static_cast<void**>(pointer) = &mKept;
                return sizeof(mKept);
            case vst2::kSetChunk:
                if (value != sizeof(mKept)) return 0;
                std::memcpy(&mKept, pointer, sizeof(mKept));
                std::copy_n(mKept.values, 2, mValues.begin());
                return 0;
            default:
                return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
    }
    void SetParameter(std::int32_t index, float value) override {
        ++mKept.turns;
        Vst2Plugin::SetParameter(index, value);
    }
    void Process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        for (int channel = 0; channel < 2; ++channel) {
            for (std::int32_t i = 0; i < frames; ++i)
                outputs[channel][i] = inputs[channel][i] * Value(0) + kStep * static_cast<float>(mKept.turns);
        }
    }

private:
    struct Kept {
        std::int32_t turns = 0;
        std::int32_t program = 0;
        float values[2] = {};
    } mKept;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Chunk(host))->GetEffect(); }
