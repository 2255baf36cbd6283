#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <pluginterfaces/base/ibstream.h>
#include <pluginterfaces/base/ipluginbase.h>
#include <pluginterfaces/gui/iplugview.h>
#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <pluginterfaces/vst/ivstcomponent.h>
#include <pluginterfaces/vst/ivsteditcontroller.h>
#include <pluginterfaces/vst/ivstmessage.h>
#include <pluginterfaces/vst/ivstparameterchanges.h>

/// The common part of the VST3 test plug-ins: a component, a controller and a factory that answer from tables of facts.
namespace zeltestplugins {

using namespace Steinberg;

typedef std::array<char, sizeof(TUID)> Id;

/// A class id: "Zel Test Plug-in" and a number.
inline Id MakeId(unsigned char number) {
    Id id = {'Z', 'e', 'l', ' ', 'T', 'e', 's', 't', ' ', 'P', 'l', 'u', 'g', 'i', 'n', 0};
    id.back() = static_cast<char>(number);
    return id;
}

struct Vst3Bus {
    Vst::BusDirection direction;
    int32 channels;
    const char* name;
    bool auxiliary = false;
    /// What it says of its speakers. Nothing: the lowest of that many.
    std::optional<Vst::SpeakerArrangement> arrangement = {};
};

struct Vst3Facts {
    const char* name;
    Id id;
    const char* subCategories = "Fx";
    std::vector<Vst3Bus> buses = {{Vst::kInput, 2, "Input"}, {Vst::kOutput, 2, "Output"}};
    std::vector<const char*> parameters = {};
    /// The class of the controller, or all zero when the component brings its own.
    Id controllerId = {};
};

inline bool IsSame(const void* left, const void* right) { return std::memcmp(left, right, sizeof(TUID)) == 0; }

inline void CopyText(char16* target, std::size_t size, const char* text) {
    const std::size_t length = std::min(std::strlen(text), size - 1);
    std::copy_n(text, length, target);
    target[length] = 0;
}

/// References of an object with one or more interfaces, found by a list of ids and pointers.
class Vst3Counted {
protected:
    typedef std::pair<const TUID&, void*> Entry;

    virtual ~Vst3Counted() = default;
    uint32 Add() { return ++mReferences; }
    uint32 Drop() {
        const uint32 left = --mReferences;
        if (left == 0) delete this;
        return left;
    }
    tresult Find(const TUID id, void** object, std::initializer_list<Entry> entries) {
        for (const Entry& entry : entries) {
            if (!IsSame(id, entry.first)) continue;
            Add();
            *object = entry.second;
            return kResultOk;
        }
        *object = nullptr;
        return kNoInterface;
    }

private:
    std::atomic<uint32> mReferences{1};
};

/// The values of all parameters, 0 to 1, as a component's state: that many doubles.
class Vst3Values {
public:
    explicit Vst3Values(std::size_t count) : mValues(count, 0.5) {}
    double& operator[](std::size_t index) { return mValues[index]; }
    std::size_t Size() const { return mValues.size(); }
    tresult Write(IBStream* stream) {
        return stream->write(mValues.data(), Bytes(), nullptr) == kResultOk ? kResultOk : kResultFalse;
    }
    tresult Read(IBStream* stream) {
        std::vector<double> values(mValues.size());
        int32 length = 0;
        if (stream->read(values.data(), Bytes(), &length) != kResultOk || length != Bytes()) return kResultFalse;
        mValues = values;
        return kResultOk;
    }

private:
    int32 Bytes() const { return static_cast<int32>(mValues.size() * sizeof(double)); }

    std::vector<double> mValues;
};

class Vst3Controller : public Vst::IEditController, private Vst3Counted {
public:
    explicit Vst3Controller(const Vst3Facts& facts) : mFacts(facts), mValues(facts.parameters.size()) {}

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        return Find(id, object,
                    {{FUnknown_iid, static_cast<Vst::IEditController*>(this)},
                     {IPluginBase_iid, static_cast<Vst::IEditController*>(this)},
                     {Vst::IEditController_iid, static_cast<Vst::IEditController*>(this)}});
    }
    uint32 PLUGIN_API addRef() override { return Add(); }
    uint32 PLUGIN_API release() override { return Drop(); }

    tresult PLUGIN_API initialize(FUnknown*) override { return kResultOk; }
    tresult PLUGIN_API terminate() override { return kResultOk; }
    tresult PLUGIN_API setComponentState(IBStream* state) override { return mValues.Read(state); }
    tresult PLUGIN_API setState(IBStream*) override { return kResultOk; }
    tresult PLUGIN_API getState(IBStream*) override { return kResultOk; }
    int32 PLUGIN_API getParameterCount() override { return static_cast<int32>(mFacts.parameters.size()); }
    tresult PLUGIN_API getParameterInfo(int32 index, Vst::ParameterInfo& info) override {
        if (!Has(index)) return kInvalidArgument;
        info = {};
        info.id = static_cast<Vst::ParamID>(index);
        info.defaultNormalizedValue = 0.5;
        info.flags = Vst::ParameterInfo::kCanAutomate;
        CopyText(info.title, std::size(info.title), mFacts.parameters[static_cast<std::size_t>(index)]);
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
    Vst::ParamValue PLUGIN_API getParamNormalized(Vst::ParamID id) override {
        return id < mValues.Size() ? mValues[id] : 0.0;
    }
    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue value) override {
        if (id >= mValues.Size()) return kInvalidArgument;
        mValues[id] = value;
        return kResultOk;
    }
    tresult PLUGIN_API setComponentHandler(Vst::IComponentHandler*) override { return kResultOk; }
    IPlugView* PLUGIN_API createView(FIDString) override { return nullptr; }

protected:
    bool Has(int32 index) const { return index >= 0 && static_cast<std::size_t>(index) < mFacts.parameters.size(); }

    Vst3Facts mFacts;
    Vst3Values mValues;
};

class Vst3Component : public Vst::IComponent, public Vst::IAudioProcessor, private Vst3Counted {
public:
    explicit Vst3Component(const Vst3Facts& facts) : mFacts(facts), mValues(facts.parameters.size()) {}

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        if (IsSame(id, Vst::IEditController_iid) && mOwnController != nullptr) {
            return mOwnController->queryInterface(id, object);
        }
        return Find(id, object,
                    {{FUnknown_iid, static_cast<Vst::IComponent*>(this)},
                     {IPluginBase_iid, static_cast<Vst::IComponent*>(this)},
                     {Vst::IComponent_iid, static_cast<Vst::IComponent*>(this)},
                     {Vst::IAudioProcessor_iid, static_cast<Vst::IAudioProcessor*>(this)}});
    }
    uint32 PLUGIN_API addRef() override { return Add(); }
    uint32 PLUGIN_API release() override { return Drop(); }

    tresult PLUGIN_API initialize(FUnknown*) override {
        if (mFacts.controllerId == Id()) mOwnController = MakeController();
        return kResultOk;
    }
    tresult PLUGIN_API terminate() override {
        if (mOwnController != nullptr) mOwnController->release();
        mOwnController = nullptr;
        return kResultOk;
    }
    tresult PLUGIN_API getControllerClassId(TUID id) override {
        if (mFacts.controllerId == Id()) return kResultFalse;
        std::copy(mFacts.controllerId.begin(), mFacts.controllerId.end(), id);
        return kResultOk;
    }
    tresult PLUGIN_API setIoMode(Vst::IoMode) override { return kNotImplemented; }
    int32 PLUGIN_API getBusCount(Vst::MediaType type, Vst::BusDirection direction) override {
        return type == Vst::kAudio ? static_cast<int32>(BusesOf(direction).size()) : 0;
    }
    tresult PLUGIN_API getBusInfo(Vst::MediaType type, Vst::BusDirection direction, int32 index,
                                  Vst::BusInfo& info) override {
        if (index < 0 || index >= getBusCount(type, direction)) return kInvalidArgument;
        const Vst3Bus bus = BusesOf(direction)[static_cast<std::size_t>(index)];
        info = {};
        info.mediaType = Vst::kAudio;
        info.direction = direction;
        info.channelCount = bus.channels;
        info.busType = bus.auxiliary ? Vst::kAux : Vst::kMain;
        info.flags = bus.auxiliary ? 0 : Vst::BusInfo::kDefaultActive;
        CopyText(info.name, std::size(info.name), bus.name);
        return kResultOk;
    }
    tresult PLUGIN_API getRoutingInfo(Vst::RoutingInfo&, Vst::RoutingInfo&) override { return kNotImplemented; }
    tresult PLUGIN_API activateBus(Vst::MediaType, Vst::BusDirection, int32, TBool) override { return kResultOk; }
    tresult PLUGIN_API setActive(TBool) override { return kResultOk; }
    tresult PLUGIN_API setState(IBStream* state) override { return mValues.Read(state); }
    tresult PLUGIN_API getState(IBStream* state) override { return mValues.Write(state); }

    tresult PLUGIN_API setBusArrangements(Vst::SpeakerArrangement*, int32, Vst::SpeakerArrangement*, int32) override {
        return kResultFalse;
    }
    tresult PLUGIN_API getBusArrangement(Vst::BusDirection direction, int32 index,
                                         Vst::SpeakerArrangement& arrangement) override {
        const std::vector<Vst3Bus> buses = BusesOf(direction);
        if (index < 0 || static_cast<std::size_t>(index) >= buses.size()) return kInvalidArgument;
        const Vst3Bus& bus = buses[static_cast<std::size_t>(index)];
        arrangement = bus.arrangement ? *bus.arrangement : LowestSpeakers(bus.channels);
        return kResultOk;
    }
    tresult PLUGIN_API canProcessSampleSize(int32 size) override {
        return size == Vst::kSample32 ? kResultTrue : kResultFalse;
    }
    uint32 PLUGIN_API getLatencySamples() override { return 0; }
    tresult PLUGIN_API setupProcessing(Vst::ProcessSetup& setup) override {
        mSampleRate = setup.sampleRate;
        return kResultOk;
    }
    tresult PLUGIN_API setProcessing(TBool) override { return kResultOk; }
    uint32 PLUGIN_API getTailSamples() override { return 0; }
    tresult PLUGIN_API process(Vst::ProcessData& data) override {
        TakeChanges(data.inputParameterChanges);
        if (data.numOutputs > 0 && data.numSamples > 0) Process(data);
        return kResultOk;
    }

protected:
    virtual Vst3Controller* MakeController() { return new Vst3Controller(mFacts); }

    /// Has at least one output bus and one frame. Here: the main input passes through, silence elsewhere.
    virtual void Process(Vst::ProcessData& data) {
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
            float* const output = data.outputs[0].channelBuffers32[channel];
            const bool hasInput = data.numInputs > 0 && channel < data.inputs[0].numChannels;
            for (int32 i = 0; i < data.numSamples; ++i) {
                output[i] = hasInput ? data.inputs[0].channelBuffers32[channel][i] : 0.0f;
            }
        }
    }

    std::vector<Vst3Bus> BusesOf(Vst::BusDirection direction) const {
        std::vector<Vst3Bus> buses = mFacts.buses;
        std::erase_if(buses, [direction](const Vst3Bus& bus) { return bus.direction != direction; });
        return buses;
    }

    /// Gives a bus that is there other speakers.
    void Arrange(Vst::BusDirection direction, int32 index, Vst::SpeakerArrangement arrangement) {
        for (Vst3Bus& bus : mFacts.buses) {
            if (bus.direction != direction || index-- != 0) continue;
            bus.arrangement = arrangement;
            bus.channels = std::popcount(arrangement);
        }
    }
    Vst::SpeakerArrangement ArrangementOf(Vst::BusDirection direction, int32 index) {
        Vst::SpeakerArrangement arrangement = 0;
        getBusArrangement(direction, index, arrangement);
        return arrangement;
    }

    Vst3Facts mFacts;
    Vst3Values mValues;
    double mSampleRate = 48000.0;

private:
    /// Mono is its own one, stereo is left and right; none for more than there are.
    static Vst::SpeakerArrangement LowestSpeakers(int32 count) {
        if (count == 1) return Vst::SpeakerArrangement(1) << 19;
        return count < 64 ? (Vst::SpeakerArrangement(1) << count) - 1 : 0;
    }

    /// The last value of each queue counts for the whole block.
    void TakeChanges(Vst::IParameterChanges* changes) {
        const int32 count = changes == nullptr ? 0 : changes->getParameterCount();
        for (int32 i = 0; i < count; ++i) {
            Vst::IParamValueQueue* const queue = changes->getParameterData(i);
            if (queue == nullptr || queue->getPointCount() == 0 || queue->getParameterId() >= mValues.Size()) continue;
            int32 offset = 0;
            queue->getPoint(queue->getPointCount() - 1, offset, mValues[queue->getParameterId()]);
        }
    }

    Vst3Controller* mOwnController = nullptr;
};

/// A component or a controller that can be connected with its other half.
template <typename Base>
class Connected : public Base, public Vst::IConnectionPoint {
public:
    using Base::Base;

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        if (!IsSame(id, Vst::IConnectionPoint_iid)) return Base::queryInterface(id, object);
        addRef();
        *object = static_cast<Vst::IConnectionPoint*>(this);
        return kResultOk;
    }
    uint32 PLUGIN_API addRef() override { return Base::addRef(); }
    uint32 PLUGIN_API release() override { return Base::release(); }
    tresult PLUGIN_API connect(Vst::IConnectionPoint*) override { return kResultOk; }
    tresult PLUGIN_API disconnect(Vst::IConnectionPoint*) override { return kResultOk; }
    tresult PLUGIN_API notify(Vst::IMessage*) override { return kResultFalse; }
};

/// The module's one factory. It makes what `Make` returns for each class of its list, and their controllers.
class Vst3Factory : public IPluginFactory2 {
public:
    explicit Vst3Factory(std::vector<Vst3Facts> classes) : mClasses(std::move(classes)) {}
    virtual ~Vst3Factory() = default;

    tresult PLUGIN_API queryInterface(const TUID id, void** object) override {
        const bool known =
            IsSame(id, FUnknown_iid) || IsSame(id, IPluginFactory_iid) || IsSame(id, IPluginFactory2_iid);
        *object = known ? static_cast<IPluginFactory2*>(this) : nullptr;
        return known ? kResultOk : kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

    tresult PLUGIN_API getFactoryInfo(PFactoryInfo* info) override {
        *info = PFactoryInfo("Zel Test Plug-ins", "", "", Vst::kDefaultFactoryFlags);
        return kResultOk;
    }
    int32 PLUGIN_API countClasses() override { return static_cast<int32>(mClasses.size()); }
    tresult PLUGIN_API getClassInfo(int32 index, PClassInfo* info) override {
        if (!Has(index)) return kInvalidArgument;
        const Vst3Facts& facts = At(index);
        *info = PClassInfo(facts.id.data(), PClassInfo::kManyInstances, kVstAudioEffectClass, facts.name);
        return kResultOk;
    }
    tresult PLUGIN_API getClassInfo2(int32 index, PClassInfo2* info) override {
        if (!Has(index)) return kInvalidArgument;
        const Vst3Facts& facts = At(index);
        *info = PClassInfo2(facts.id.data(), PClassInfo::kManyInstances, kVstAudioEffectClass, facts.name, 0,
                            facts.subCategories, "", "1.2.3", "VST 3.7");
        return kResultOk;
    }
    tresult PLUGIN_API createInstance(FIDString classId, FIDString interfaceId, void** object) override {
        *object = nullptr;
        for (const Vst3Facts& facts : mClasses) {
            if (IsSame(classId, facts.id.data())) return HandOver(Make(facts), interfaceId, object);
            if (facts.controllerId != Id() && IsSame(classId, facts.controllerId.data())) {
                return HandOver(MakeController(facts), interfaceId, object);
            }
        }
        return kResultFalse;
    }

protected:
    virtual Vst::IComponent* Make(const Vst3Facts& facts) { return new Vst3Component(facts); }
    virtual Vst::IEditController* MakeController(const Vst3Facts& facts) { return new Vst3Controller(facts); }

    bool Has(int32 index) const { return index >= 0 && static_cast<std::size_t>(index) < mClasses.size(); }
    const Vst3Facts& At(int32 index) const { return mClasses[static_cast<std::size_t>(index)]; }

private:
    static tresult HandOver(FUnknown* made, FIDString interfaceId, void** object) {
        const tresult result = made->queryInterface(interfaceId, object);
        made->release();
        return result;
    }

    std::vector<Vst3Facts> mClasses;
};

}  // namespace zeltestplugins

/// The functions that a module starts and ends with, by the names of all platforms; each returns what its expression
/// says.
#define ZEL_VST3_MODULE_WITH(start, end)                                    \
    extern "C" SMTG_EXPORT_SYMBOL bool ModuleEntry(void*) { return start; } \
    extern "C" SMTG_EXPORT_SYMBOL bool ModuleExit() { return end; }         \
    extern "C" SMTG_EXPORT_SYMBOL bool InitDll() { return start; }          \
    extern "C" SMTG_EXPORT_SYMBOL bool ExitDll() { return end; }

#define ZEL_VST3_MODULE ZEL_VST3_MODULE_WITH(true, true)

/// Declares the function that returns the factory; the body returns it.
#define ZEL_VST3_FACTORY extern "C" SMTG_EXPORT_SYMBOL Steinberg::IPluginFactory* PLUGIN_API GetPluginFactory()
