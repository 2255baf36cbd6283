// Three programs, each with values of its own, and no block of bytes.
#include <array>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Programs : public Vst2Plugin {
public:
    explicit Programs(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Programs", 0x5A507267, 2, 2, {"Gain", "Other"}}) {
        mEffect.programCount = static_cast<std::int32_t>(mPrograms.size());
        mValues = mPrograms[0];
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        switch (operation) {
            case vst2::kSetProgram:
                mPrograms[mProgram] = mValues;
                mProgram = static_cast<std::size_t>(value) % mPrograms.size();
                mValues = mPrograms[mProgram];
                return 0;
            case vst2::kGetProgram:
                return static_cast<std::intptr_t>(mProgram);
            default:
                return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
    }
    /// The second parameter turned up fully chooses the last program, as a plug-in's own editor would.
    void SetParameter(std::int32_t index, float value) override {
        Vst2Plugin::SetParameter(index, value);
        if (index == 1 && value == 1.0f) Dispatch(vst2::kSetProgram, 0, 2, nullptr, 0.0f);
    }

private:
    std::array<std::vector<float>, 3> mPrograms = {{{0.1f, 0.5f}, {0.2f, 0.5f}, {0.3f, 0.5f}}};
    std::size_t mProgram = 0;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Programs(host))->GetEffect(); }
