#include "Vst3AudioFilter.h"

#include <algorithm>
#include <utility>

#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

#include "PluginCall.h"
#include "Vst3Editor.h"
#include "Vst3MemoryStream.h"
#include "Vst3Module.h"
#include "Vst3State.h"
#include "Vst3View.h"

namespace zelaudiofilterhost {

Vst3AudioFilter::Vst3AudioFilter(std::shared_ptr<Vst3Module> module, const Vst3Class& effectClass,
                                 const PluginComponentInfo& component)
    : mComponentId(component.componentId),
      mName(component.name.empty() ? effectClass.name : component.name),
      mHandler(Vst3Ptr<Vst3EditHandler>::Adopt(new Vst3EditHandler)),
      mInstance(std::move(module), effectClass, *mHandler.Get()),
      mParameters(mInstance.GetController()),
      mProcessor(mInstance.GetComponent(), mParameters.GetToProcessor(), mParameters.GetFromProcessor()),
      // A scan that found no editor may have had no display to find it on.
      mHasEditor(component.hasEditor ? std::optional<bool>(true) : std::nullopt),
      mEditor(nullptr) {
    SynchroniseController();
    mHandler->SetTarget(&mParameters);
}

Vst3AudioFilter::~Vst3AudioFilter() {
    StopProcessing();
    mHandler->SetTarget(nullptr);
}

AudioFilter::State Vst3AudioFilter::GetState() const {
    const boost::intrusive_ptr<const AudioFilter> self(this);
    const std::optional<StateEnvelope> state = Vst3State::Read(mInstance, mParameters, mProcessor.GetGate());
    return state ? state->Pack(mComponentId) : State();
}

bool Vst3AudioFilter::SetState(const State& bytes) {
    // The plug-in may run the event loop, or whoever is told may let go of the filter.
    const boost::intrusive_ptr<AudioFilter> self(this);
    const std::optional<StateEnvelope> state = StateEnvelope::Unpack(bytes, mComponentId);
    if (!state || !Vst3State::IsFit(*state)) return false;
    bool isTaken = false;
    {
        const BlockGate::Closed closed(mProcessor.GetGate());
        if (!closed.IsFirst()) return false;
        isTaken = Vst3State::Write(*state, mInstance, mParameters);
    }
    GetStateChangedSignal()();
    return isTaken;
}

bool Vst3AudioFilter::HasEditor() const {
    if (mEditor != nullptr) return true;
    if (!mHasEditor) mHasEditor = bool(MakeView());
    return mEditor != nullptr || *mHasEditor;
}

boost::intrusive_ptr<AudioFilterEditor> Vst3AudioFilter::GetEditor() {
    if (mEditor != nullptr) return mEditor;
    Vst3Ptr<Steinberg::IPlugView> view = MakeView();
    mHasEditor = bool(view);
    // The plug-in may have run the event loop, and somebody may have got an editor there.
    if (view && mEditor == nullptr) mEditor = new Vst3Editor(*this, std::move(view));
    return mEditor;
}

Vst3Ptr<Steinberg::IPlugView> Vst3AudioFilter::MakeView() const {
    Vst3Ptr<Steinberg::IPlugView> view;
    if (mInstance.GetController() == nullptr) return view;
    CallPluginQuietly([&] { view = MakeVst3View(*mInstance.GetController()); });
    return view;
}

void Vst3AudioFilter::GetBusConfiguration(AudioFilterBusList& inputs, AudioFilterBusList& outputs) const {
    inputs = mProcessor.GetLayout().inputs;
    outputs = mProcessor.GetLayout().outputs;
}

bool Vst3AudioFilter::StartEffect(double sampleRate, int maximumFrames) {
    return mProcessor.Start(sampleRate, maximumFrames, GetParameterCount());
}

void Vst3AudioFilter::SynchroniseController() {
    if (mInstance.GetController() == nullptr) return;
    CallPluginQuietly([this] {
        const auto state = Vst3Ptr<Vst3MemoryStream>::Adopt(new Vst3MemoryStream);
        if (mInstance.GetComponent().getState(state.Get()) != Steinberg::kResultOk) return;
        state->seek(0, Steinberg::IBStream::kIBSeekSet, nullptr);
        mInstance.GetController()->setComponentState(state.Get());
    });
}

boost::intrusive_ptr<AudioFilter> MakeVst3AudioFilter(const std::string& path, const PluginComponentInfo& component,
                                                      const zelcore::ustring& /*subcomponent*/) {
    const std::shared_ptr<Vst3Module> module = Vst3Module::Open(path);
    const std::vector<Vst3Class> classes = module->ListClasses();
    const auto found = std::find_if(classes.begin(), classes.end(), [&component](const Vst3Class& effectClass) {
        return zelcore::utility::AsciiToUTF16("VST3-") + effectClass.GetIdText() == component.componentId;
    });
    if (found == classes.end()) throw PluginLoadError("does not contain this component any more");
    return boost::intrusive_ptr<AudioFilter>(new Vst3AudioFilter(module, *found, component));
}

}  // namespace zelaudiofilterhost
