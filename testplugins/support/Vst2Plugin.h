#pragma once

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include <Vst2Abi.h>
#include <zelcore/Export.h>

/// The common part of the VST2 test plug-ins: an effect that answers the usual questions from a table of facts.
namespace zeltestplugins {

namespace vst2 = zelaudiofilterhost::vst2;

struct Vst2Facts {
    const char* name;
    std::int32_t id;
    std::int32_t inputs;
    std::int32_t outputs;
    std::vector<const char*> parameters = {};
    vst2::Category category = vst2::kCategoryEffect;
    std::int32_t version = 0x010203;
};

class Vst2Plugin {
public:
    Vst2Plugin(vst2::HostCallback host, const Vst2Facts& facts)
        : mHost(host), mFacts(facts), mValues(facts.parameters.size(), 0.5f) {
        mEffect.magic = vst2::kMagic;
        mEffect.dispatcher = &OnDispatch;
        mEffect.setParameter = &OnSetParameter;
        mEffect.getParameter = &OnGetParameter;
        mEffect.parameterCount = static_cast<std::int32_t>(facts.parameters.size());
        mEffect.inputCount = facts.inputs;
        mEffect.outputCount = facts.outputs;
        mEffect.flags = vst2::kCanReplace | (facts.category == vst2::kCategorySynth ? vst2::kIsSynth : 0);
        mEffect.object = this;
        mEffect.uniqueId = facts.id;
        mEffect.version = facts.version;
        mEffect.process = &OnProcess;
    }
    virtual ~Vst2Plugin() = default;
    Vst2Plugin(const Vst2Plugin&) = delete;
    Vst2Plugin& operator=(const Vst2Plugin&) = delete;

    vst2::Effect* GetEffect() { return &mEffect; }

protected:
    virtual std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                                   float number) {
        (void)value;
        switch (operation) {
            case vst2::kSetSampleRate:
                mSampleRate = number;
                return 1;
            case vst2::kGetEffectName:
                return Answer(pointer, 32, mFacts.name);
            case vst2::kGetProductText:
                return Answer(pointer, 64, mFacts.name);
            case vst2::kGetVendorText:
                return Answer(pointer, 64, "Zel Test Plug-ins");
            case vst2::kGetVendorVersion:
                return mEffect.version;
            case vst2::kGetVstVersion:
                return 2400;
            case vst2::kGetCategory:
                return mFacts.category;
            case vst2::kCanBeAutomated:
                return HasParameter(index) ? 1 : 0;
            case vst2::kGetParameterName:
                return HasParameter(index) ? Answer(pointer, 24, ParameterName(index)) : 0;
            case vst2::kGetParameterDisplay:
                return HasParameter(index) ? AnswerValue(pointer, index) : 0;
            default:
                return 0;
        }
    }

    /// `outputs` may be the same buffers as `inputs`. Here: passes through what has a counterpart, silence elsewhere.
    virtual void Process(const float* const* inputs, float* const* outputs, std::int32_t frames) {
        for (std::int32_t channel = 0; channel < mEffect.outputCount; ++channel) {
            if (channel >= mEffect.inputCount) {
                std::fill_n(outputs[channel], frames, 0.0f);
            } else if (inputs[channel] != outputs[channel]) {
                std::copy_n(inputs[channel], frames, outputs[channel]);
            }
        }
    }

    /// Only for parameters that are there.
    virtual void SetParameter(std::int32_t index, float value) {
        mValues[static_cast<std::size_t>(index)] = std::clamp(value, 0.0f, 1.0f);
    }
    virtual float GetParameter(std::int32_t index) { return mValues[static_cast<std::size_t>(index)]; }

    /// Writes a text with its NUL into a buffer of `size` bytes.
    static std::intptr_t Answer(void* pointer, std::size_t size, const char* text) {
        std::snprintf(static_cast<char*>(pointer), size, "%s", text);
        return 1;
    }

    bool HasParameter(std::int32_t index) const { return index >= 0 && index < mEffect.parameterCount; }
    float Value(std::size_t index) const { return mValues[index]; }

    vst2::HostCallback mHost;
    Vst2Facts mFacts;
    vst2::Effect mEffect = {};
    std::vector<float> mValues;
    float mSampleRate = 48000.0f;

private:
    const char* ParameterName(std::int32_t index) const { return mFacts.parameters[static_cast<std::size_t>(index)]; }
    std::intptr_t AnswerValue(void* pointer, std::int32_t index) const {
        std::snprintf(static_cast<char*>(pointer), 8, "%.2f", double(mValues[static_cast<std::size_t>(index)]));
        return 1;
    }

    static Vst2Plugin& Of(vst2::Effect* effect) { return *static_cast<Vst2Plugin*>(effect->object); }
    static std::intptr_t OnDispatch(vst2::Effect* effect, std::int32_t operation, std::int32_t index,
                                    std::intptr_t value, void* pointer, float number) {
        // Closing deletes the effect, whatever happens meanwhile.
        const std::unique_ptr<Vst2Plugin> closed(operation == vst2::kClose ? &Of(effect) : nullptr);
        return Of(effect).Dispatch(operation, index, value, pointer, number);
    }
    static void OnSetParameter(vst2::Effect* effect, std::int32_t index, float value) {
        if (Of(effect).HasParameter(index)) Of(effect).SetParameter(index, value);
    }
    static float OnGetParameter(vst2::Effect* effect, std::int32_t index) {
        return Of(effect).HasParameter(index) ? Of(effect).GetParameter(index) : 0.0f;
    }
    static void OnProcess(vst2::Effect* effect, float** inputs, float** outputs, std::int32_t frames) {
        Of(effect).Process(inputs, outputs, frames);
    }
};

}  // namespace zeltestplugins

/// Declares the module's entry; the body makes the effect. `host` is the host's callback.
#define ZEL_VST2_ENTRY                                                         \
    extern "C" ZEL_DLL_EXPORT zelaudiofilterhost::vst2::Effect* VSTPluginMain( \
        [[maybe_unused]] zelaudiofilterhost::vst2::HostCallback host)
