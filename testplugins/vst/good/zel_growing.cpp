// Two channels in and out; with its parameter above 0.5 it says that it has eight, above 0.9 a hundred thousand, and
// uses them all. It works in its input buffers and passes on the sum of its inputs in every output.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::int32_t kUsual = 2;
constexpr std::int32_t kMore = 8;
constexpr std::int32_t kTooMany = 100000;

class Growing : public Vst2Plugin {
public:
    explicit Growing(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Growing", 0x5A47726F, kUsual, kUsual, {"Channels"}}) {
        mValues[0] = 0.0f;
        mEffect.process = &OnProcessInPlace;
    }

protected:
    void SetParameter(std::int32_t index, float value) override {
        Vst2Plugin::SetParameter(index, value);
        mEffect.inputCount = mEffect.outputCount = value > 0.9f ? kTooMany : value > 0.5f ? kMore : kUsual;
        mHost(&mEffect, vst2::kHostIoChanged, 0, 0, nullptr, 0.0f);
    }

private:
    static void OnProcessInPlace(vst2::Effect* effect, float** inputs, float** outputs, std::int32_t frames) {
        float* const sum = inputs[0];
        for (std::int32_t channel = 1; channel < effect->inputCount; ++channel) {
            for (std::int32_t i = 0; i < frames; ++i) sum[i] += inputs[channel][i];
        }
        for (std::int32_t channel = 0; channel < effect->outputCount; ++channel) {
            std::copy_n(sum, frames, outputs[channel]);
        }
        for (std::int32_t channel = 0; channel < effect->inputCount; ++channel) {
            std::fill_n(inputs[channel], frames, 99.0f);
            // Walks through the arrays that it was given, as old code does.
            ++inputs[channel];
        }
        for (std::int32_t channel = 0; channel < effect->outputCount; ++channel) ++outputs[channel];
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Growing(host))->GetEffect(); }
