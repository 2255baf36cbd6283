// A stereo effect with a level meter: a parameter that it moves itself, with each block, to the loudest sample. Two
// points are told, of which the last counts, and a value that is no number for a parameter that is not there. It has a
// second output that it never writes to.
#include <cmath>
#include <limits>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr Vst::ParamID kLevel = 1;
constexpr Vst::ParamID kNotThere = 99;

class Controller : public Vst3Controller {
public:
    using Vst3Controller::Vst3Controller;

    tresult PLUGIN_API getParameterInfo(int32 index, Vst::ParameterInfo& info) override {
        const tresult result = Vst3Controller::getParameterInfo(index, info);
        if (index == int32(kLevel)) info.flags = Vst::ParameterInfo::kIsReadOnly;
        return result;
    }
};

class Meter : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    Vst3Controller* MakeController() override { return new Controller(mFacts); }

    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        float loudest = 0.0f;
        for (int32 i = 0; i < data.numSamples; ++i) {
            loudest = std::max(loudest, std::fabs(data.outputs[0].channelBuffers32[0][i]));
        }
        Tell(data.outputParameterChanges, kNotThere, std::numeric_limits<double>::quiet_NaN());
        Tell(data.outputParameterChanges, kLevel, double(loudest));
    }

private:
    static void Tell(Vst::IParameterChanges* changes, Vst::ParamID id, double value) {
        int32 index = 0;
        Vst::IParamValueQueue* const queue = changes->addParameterData(id, index);
        if (queue == nullptr) return;
        queue->addPoint(0, 0.0, index);
        queue->addPoint(1, value, index);
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Meter(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel Meter 3",
          .id = MakeId(46),
          .buses = {{Vst::kInput, 2, "Input"}, {Vst::kOutput, 2, "Output"}, {Vst::kOutput, 1, "Monitor", true}},
          .parameters = {"Dummy", "Level"}}});
    return &factory;
}
