// Says no when its effect is initialised, and must then not be asked to end.
#include "support/Misbehaviour.h"
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API initialize(FUnknown*) override { return kResultFalse; }
    tresult PLUGIN_API terminate() override {
        Crash();
        return kResultOk;
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
    static Factory factory({{.name = "RefusesInit3", .id = MakeId(26)}});
    return &factory;
}
