// Has three inputs of a thousand channels each, and does not say how their speakers are arranged.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API getBusArrangement(Vst::BusDirection, int32, Vst::SpeakerArrangement&) override {
        return kResultFalse;
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
    static Factory factory({{.name = "TooManyChannels3",
                             .id = MakeId(30),
                             .buses = {{Vst::kInput, 1000, "First"},
                                       {Vst::kInput, 1000, "Second"},
                                       {Vst::kInput, 1000, "Third"},
                                       {Vst::kOutput, 2, "Output"}}}});
    return &factory;
}
