// A stereo gain with 2,000 parameters, of which the first is the gain. Its ids are not its indices, and the component's
// second parameter starts at a quarter, which the controller can know from the state only.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::size_t kParameters = 2000;

/// Every id from 0 to kParameters - 1 once, in another order than the indices.
Vst::ParamID IdOf(std::size_t index) { return static_cast<Vst::ParamID>((index * 7 + 3) % kParameters); }

std::vector<const char*> MakeTitles() {
    static std::vector<std::string> titles;
    std::vector<const char*> pointers;
    titles.reserve(kParameters);
    for (std::size_t i = 0; i < kParameters; ++i) {
        titles.push_back(i == 0 ? "Gain" : "Parameter " + std::to_string(i));
        pointers.push_back(titles.back().c_str());
    }
    return pointers;
}

class Controller : public Vst3Controller {
public:
    using Vst3Controller::Vst3Controller;

    tresult PLUGIN_API getParameterInfo(int32 index, Vst::ParameterInfo& info) override {
        const tresult result = Vst3Controller::getParameterInfo(index, info);
        if (result == kResultOk) info.id = IdOf(static_cast<std::size_t>(index));
        return result;
    }
};

class Many : public Vst3Component {
public:
    explicit Many(const Vst3Facts& facts) : Vst3Component(facts) { mValues[IdOf(1)] = 0.25; }

protected:
    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        const auto gain = static_cast<float>(mValues[IdOf(0)]);
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
            float* const output = data.outputs[0].channelBuffers32[channel];
            for (int32 i = 0; i < data.numSamples; ++i) output[i] *= gain;
        }
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Many(facts); }
    Vst::IEditController* MakeController(const Vst3Facts& facts) override { return new Controller(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel Many 3", .id = MakeId(41), .parameters = MakeTitles(), .controllerId = MakeId(42)}});
    return &factory;
}
