// A stereo gain whose number of parameters follows its first one, the gain: 5 below a quarter, 2 from there on, 8 from
// three quarters on. Component and controller are one object. Whenever the second parameter is moved up beyond the
// middle, it reports from a thread of its own: everything has changed, and the gain is an eighth.
#include <thread>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::size_t kMost = 8;
constexpr int32 kEverything = 0x3FF;

class Changing : public Vst3Component, public Vst::IEditController {
public:
    explicit Changing(const Vst3Facts& facts) : Vst3Component(facts), mShown(kMost) {
        for (std::size_t i = 0; i < kMost; ++i) mShown[i] = mValues[i] = 0.0;
    }

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        if (!IsSame(id, Vst::IEditController_iid)) return Vst3Component::queryInterface(id, object);
        addRef();
        *object = static_cast<Vst::IEditController*>(this);
        return kResultOk;
    }
    uint32 PLUGIN_API addRef() override { return Vst3Component::addRef(); }
    uint32 PLUGIN_API release() override { return Vst3Component::release(); }
    tresult PLUGIN_API initialize(FUnknown*) override { return kResultOk; }
    tresult PLUGIN_API terminate() override { return kResultOk; }
    tresult PLUGIN_API setState(IBStream* state) override { return Vst3Component::setState(state); }
    tresult PLUGIN_API getState(IBStream* state) override { return Vst3Component::getState(state); }

    tresult PLUGIN_API setComponentState(IBStream* state) override { return mShown.Read(state); }
    int32 PLUGIN_API getParameterCount() override {
        if (mShown[0] < 0.25) return 5;
        return mShown[0] < 0.75 ? 2 : 8;
    }
    tresult PLUGIN_API getParameterInfo(int32 index, Vst::ParameterInfo& info) override {
        if (index < 0 || index >= getParameterCount()) return kInvalidArgument;
        info = {};
        info.id = static_cast<Vst::ParamID>(index);
        const std::string title = std::to_string(index + 1) + " of " + std::to_string(getParameterCount());
        CopyText(info.title, std::size(info.title), title.c_str());
        return kResultOk;
    }
    tresult PLUGIN_API getParamStringByValue(Vst::ParamID, Vst::ParamValue value, Vst::String128 text) override {
        CopyText(text, 128, std::to_string(value).c_str());
        return kResultOk;
    }
    tresult PLUGIN_API getParamValueByString(Vst::ParamID, Vst::TChar*, Vst::ParamValue&) override {
        return kResultFalse;
    }
    Vst::ParamValue PLUGIN_API normalizedParamToPlain(Vst::ParamID, Vst::ParamValue value) override { return value; }
    Vst::ParamValue PLUGIN_API plainParamToNormalized(Vst::ParamID, Vst::ParamValue value) override { return value; }
    Vst::ParamValue PLUGIN_API getParamNormalized(Vst::ParamID id) override { return id < kMost ? mShown[id] : 0.0; }
    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue value) override {
        if (id >= kMost) return kInvalidArgument;
        const int32 before = getParameterCount();
        const bool reports = id == 1 && mShown[1] <= 0.5 && value > 0.5;
        mShown[id] = value;
        if (mHandler != nullptr && getParameterCount() != before) {
            mHandler->restartComponent(Vst::kParamTitlesChanged | Vst::kParamValuesChanged);
        }
        if (mHandler != nullptr && reports) std::thread([this] { Report(); }).join();
        return kResultOk;
    }
    tresult PLUGIN_API setComponentHandler(Vst::IComponentHandler* handler) override {
        if (handler != nullptr) handler->addRef();
        if (mHandler != nullptr) mHandler->release();
        mHandler = handler;
        return kResultOk;
    }
    IPlugView* PLUGIN_API createView(FIDString) override { return nullptr; }

protected:
    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
            float* const output = data.outputs[0].channelBuffers32[channel];
            for (int32 i = 0; i < data.numSamples; ++i) output[i] *= static_cast<float>(mValues[0]);
        }
        int32 index = 0;
        Vst::IParamValueQueue* const queue =
            mValues[0] > 0.0 ? data.outputParameterChanges->addParameterData(0, index) : nullptr;
        if (queue != nullptr) queue->addPoint(0, mValues[0], index);
    }

private:
    void Report() {
        mHandler->restartComponent(kEverything);
        mHandler->beginEdit(0);
        mShown[0] = 0.125;
        mHandler->performEdit(0, 0.125);
        mHandler->endEdit(0);
    }

    Vst3Values mShown;
    Vst::IComponentHandler* mHandler = nullptr;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Changing(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel Changing 3", .id = MakeId(45), .parameters = std::vector<const char*>(kMost, "")}});
    return &factory;
}
