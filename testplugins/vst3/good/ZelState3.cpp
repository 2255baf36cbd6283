// Keeps state in both halves: the component its gain and how many blocks had a change, which its sound tells; the
// controller the skin of an editor, which the component knows nothing of. The controller says that its values changed
// when it is given the component's, as editors expect.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr float kStep = 1.0f / 64.0f;

class Controller : public Vst3Controller {
public:
    using Vst3Controller::Vst3Controller;

    ~Controller() override {
        if (mHandler != nullptr) mHandler->release();
    }
    tresult PLUGIN_API setComponentHandler(Vst::IComponentHandler* handler) override {
        if (handler != nullptr) handler->addRef();
        if (mHandler != nullptr) mHandler->release();
        mHandler = handler;
        return kResultOk;
    }
    tresult PLUGIN_API setComponentState(IBStream* stream) override {
        int32 length = 0;
        double gain = 0.0;
        if (stream->read(&gain, sizeof(gain), &length) != kResultOk || length != sizeof(gain)) return kResultFalse;
        mValues[0] = gain;
        return mHandler == nullptr ? kResultOk : mHandler->restartComponent(Vst::kParamValuesChanged);
    }
    tresult PLUGIN_API getState(IBStream* stream) override {
        return stream->write(&mValues[1], sizeof(double), nullptr);
    }
    tresult PLUGIN_API setState(IBStream* stream) override {
        return stream->read(&mValues[1], sizeof(double), nullptr);
    }

private:
    Vst::IComponentHandler* mHandler = nullptr;
};

class State : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API getState(IBStream* stream) override {
        stream->write(&mValues[0], sizeof(double), nullptr);
        return stream->write(&mTurns, sizeof(mTurns), nullptr);
    }
    tresult PLUGIN_API setState(IBStream* stream) override {
        int32 length = 0;
        stream->read(&mValues[0], sizeof(double), nullptr);
        return stream->read(&mTurns, sizeof(mTurns), &length) == kResultOk && length == sizeof(mTurns) ? kResultOk
                                                                                                       : kResultFalse;
    }
    tresult PLUGIN_API process(Vst::ProcessData& data) override {
        if (data.inputParameterChanges != nullptr && data.inputParameterChanges->getParameterCount() > 0) ++mTurns;
        return Vst3Component::process(data);
    }

protected:
    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
            float* const output = data.outputs[0].channelBuffers32[channel];
            for (int32 i = 0; i < data.numSamples; ++i)
                output[i] = output[i] * static_cast<float>(mValues[0]) + kStep * static_cast<float>(mTurns);
        }
    }

private:
    int32 mTurns = 0;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new State(facts); }
    Vst::IEditController* MakeController(const Vst3Facts& facts) override { return new Controller(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel State 3", .id = MakeId(110), .parameters = {"Gain", "Skin"}, .controllerId = MakeId(111)}});
    return &factory;
}
