// Five effects that are odd with their states, each when its first parameter is turned up: one whose component keeps
// none, one that refuses what it is given, one that lets exceptions out, one that writes more than anybody takes, and
// one whose controller takes no value from its component's state, but hides its second parameter.
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

/// The component of a controller that keeps to itself.
class Apart : public None {
public:
    using None::None;

    tresult PLUGIN_API getState(IBStream* stream) override { return mValues.Write(stream); }
    tresult PLUGIN_API setState(IBStream* stream) override { return mValues.Read(stream); }

protected:
    Vst3Controller* MakeController() override;
};

class ApartController : public Vst3Controller {
public:
    using Vst3Controller::Vst3Controller;

    tresult PLUGIN_API setComponentState(IBStream* stream) override {
        Vst3Values values(mValues.Size());
        mHides = values.Read(stream) == kResultOk && values[0] > 0.75;
        return kNotImplemented;
    }
    tresult PLUGIN_API getParameterInfo(int32 index, Vst::ParameterInfo& info) override {
        const tresult result = Vst3Controller::getParameterInfo(index, info);
        if (index == 1 && mHides) info.flags |= Vst::ParameterInfo::kIsHidden;
        return result;
    }

private:
    bool mHides = false;
};

Vst3Controller* Apart::MakeController() { return new ApartController(mFacts); }

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
            case 115:
                return new Large(facts);
            default:
                return new Apart(facts);
        }
    }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    const std::vector<const char*> parameters = {"Turn"};
    const std::vector<const char*> two = {"Turn", "More"};
    static Factory factory({{.name = "Zel State None 3", .id = MakeId(112), .parameters = parameters},
                            {.name = "Zel State Refuses 3", .id = MakeId(113), .parameters = parameters},
                            {.name = "Zel State Throws 3", .id = MakeId(114), .parameters = parameters},
                            {.name = "Zel State Large 3", .id = MakeId(115), .parameters = parameters},
                            {.name = "Zel State Apart 3", .id = MakeId(116), .parameters = two}});
    return &factory;
}
