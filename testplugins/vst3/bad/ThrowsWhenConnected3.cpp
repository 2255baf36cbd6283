// Its controller throws when it is connected, and its component, connected by then, does not bear to be ended before
// the connection is.
#include <cstdlib>
#include <stdexcept>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Controller : public Connected<Vst3Controller> {
public:
    using Connected<Vst3Controller>::Connected;

    tresult PLUGIN_API connect(Vst::IConnectionPoint*) override { throw std::runtime_error("no wire"); }
};

class Component : public Connected<Vst3Component> {
public:
    using Connected<Vst3Component>::Connected;

    tresult PLUGIN_API connect(Vst::IConnectionPoint*) override {
        mConnected = true;
        return kResultOk;
    }
    tresult PLUGIN_API disconnect(Vst::IConnectionPoint*) override {
        mConnected = false;
        return kResultOk;
    }
    tresult PLUGIN_API terminate() override {
        if (mConnected) std::abort();
        return Connected<Vst3Component>::terminate();
    }

private:
    bool mConnected = false;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Component(facts); }
    Vst::IEditController* MakeController(const Vst3Facts& facts) override { return new Controller(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "ThrowsWhenConnected3", .id = MakeId(27), .controllerId = MakeId(28)}});
    return &factory;
}
