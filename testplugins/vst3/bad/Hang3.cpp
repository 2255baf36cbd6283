// Never comes back from being initialised.
#include "support/Misbehaviour.h"
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API initialize(FUnknown*) override {
        Hang();
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
    static Factory factory({{.name = "Hang3", .id = MakeId(23)}});
    return &factory;
}
