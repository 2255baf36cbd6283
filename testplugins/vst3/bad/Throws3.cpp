// Lets an exception out when it is initialised.
#include <stdexcept>

#include "support/Misbehaviour.h"
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API initialize(FUnknown*) override { throw std::runtime_error("no sound today"); }
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
    static Factory factory({{.name = "Throws3", .id = MakeId(25)}});
    return &factory;
}
