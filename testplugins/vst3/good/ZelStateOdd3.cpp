// Four components that go wrong with their states, each when its parameter is turned up: one that keeps none, one that
// refuses what it is given, one that lets exceptions out, and one that writes more than anybody takes.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Odd : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    bool IsTurnedUp() { return mValues[0] > 0.75; }
};

class None : public Odd {
public:
    using Odd::Odd;

    tresult PLUGIN_API getState(IBStream*) override { return kNotImplemented; }
    tresult PLUGIN_API setState(IBStream*) override { return kNotImplemented; }

protected:
    void Process(Vst::ProcessData& data) override {
        Odd::Process(data);
        for (int32 i = 0; i < data.numSamples; ++i)
            data.outputs[0].channelBuffers32[0][i] *= static_cast<float>(mValues[0]);
    }
};

class Refuses : public Odd {
public:
    using Odd::Odd;

    tresult PLUGIN_API setState(IBStream*) override { return kResultFalse; }
};

class Throws : public Odd {
public:
    using Odd::Odd;

    tresult PLUGIN_API getState(IBStream* stream) override {
        if (IsTurnedUp()) throw 7;
        return Odd::getState(stream);
    }
    tresult PLUGIN_API setState(IBStream*) override { throw 7; }
};

class Large : public Odd {
public:
    using Odd::Odd;

    tresult PLUGIN_API getState(IBStream* stream) override {
        std::vector<char> block(1 << 20);
        const int blocks = IsTurnedUp() ? 70 : 1;
        for (int i = 0; i < blocks; ++i) stream->write(block.data(), static_cast<int32>(block.size()), nullptr);
        return kResultOk;
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override {
        switch (facts.id.back()) {
            case 112:
                return new None(facts);
            case 113:
                return new Refuses(facts);
            case 114:
                return new Throws(facts);
            default:
                return new Large(facts);
        }
    }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    const std::vector<const char*> parameters = {"Turn"};
    static Factory factory({{.name = "Zel State None 3", .id = MakeId(112), .parameters = parameters},
                            {.name = "Zel State Refuses 3", .id = MakeId(113), .parameters = parameters},
                            {.name = "Zel State Throws 3", .id = MakeId(114), .parameters = parameters},
                            {.name = "Zel State Large 3", .id = MakeId(115), .parameters = parameters}});
    return &factory;
}
