// Says everything about itself, and fails with the sound: it leaves noise in its outputs, then lets an exception out
// when its parameter is above the middle, and says that it failed otherwise.
#include <stdexcept>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API process(Vst::ProcessData& data) override {
        Vst3Component::process(data);
        if (mValues[0] > 0.5) throw std::runtime_error("no sound today");
        return kResultFalse;
    }

protected:
    void Process(Vst::ProcessData& data) override {
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
            std::fill_n(data.outputs[0].channelBuffers32[channel], data.numSamples, 0.75f);
        }
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Bad(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "ThrowsWhenProcessing3", .id = MakeId(29), .parameters = {"Throws"}}});
    return &factory;
}
