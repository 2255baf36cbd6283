#include "Vst2AudioFilter.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <zelaudiofilterhost/PluginDescription.h>

#include "PluginCall.h"
#include "Vst2Editor.h"
#include "Vst2Host.h"
#include "Vst2Shell.h"
#include "Vst2State.h"

namespace zelaudiofilterhost {

namespace {

constexpr char kGone[] = "does not contain this component any more";

bool IsInShell(const Vst2Module& module, std::int32_t id) {
    const Vst2Instance shell(module, 0);
    if (!IsVst2Shell(shell)) return false;
    const std::vector<Vst2ShellEntry> entries = ListVst2Shell(shell);
    return std::any_of(entries.begin(), entries.end(), [id](const Vst2ShellEntry& entry) { return entry.id == id; });
}

std::unique_ptr<Vst2Instance> MakeShellComponent(const Vst2Module& module, std::int32_t id) {
    std::unique_ptr<Vst2Instance> instance;
    try {
        instance = std::make_unique<Vst2Instance>(module, id);
    } catch (const PluginLoadError&) {
        if (IsInShell(module, id)) throw;
        throw PluginLoadError(kGone);
    }
    // Variants of one effect may share an id of their own; then only the shell's list knows.
    if (instance->GetEffect().uniqueId != id && !IsInShell(module, id)) throw PluginLoadError(kGone);
    return instance;
}

std::unique_ptr<Vst2Instance> MakeInstance(const Vst2Module& module, const PluginComponentInfo& component,
                                           const zelcore::ustring& subcomponent) {
    if (!subcomponent.empty()) {
        const std::optional<std::int32_t> id = ParseVst2IdText(subcomponent);
        // The id 0 would make the shell itself.
        if (!id || *id == 0) throw PluginLoadError(kGone);
        return MakeShellComponent(module, *id);
    }
    const auto id = static_cast<std::int32_t>(component.uniqueId);
    auto instance = std::make_unique<Vst2Instance>(module, 0);
    if (IsVst2Shell(*instance)) {
        if (id == 0) throw PluginLoadError(kGone);
        instance.reset();
        return MakeShellComponent(module, id);
    }
    if (instance->GetEffect().uniqueId != id) throw PluginLoadError(kGone);
    return instance;
}

int ClampChannels(std::int32_t count) { return std::clamp(count, 0, PluginComponentInfo::kMaxChannels); }

/// Runs code of the plug-in's; false when it throws.
template <typename Function>
bool Try(Function function) noexcept {
    try {
        function();
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace

boost::intrusive_ptr<AudioFilter> MakeVst2AudioFilter(const std::string& path, const PluginComponentInfo& component,
                                                      const zelcore::ustring& subcomponent) {
    return new Vst2AudioFilter(path, component, subcomponent);
}

Vst2AudioFilter::Vst2AudioFilter(const std::string& path, const PluginComponentInfo& component,
                                 const zelcore::ustring& subcomponent)
    : mComponentId(component.componentId),
      mName(component.name),
      mModule(std::make_unique<Vst2Module>(path)),
      mInstance(MakeInstance(*mModule, component, subcomponent)),
      mBuffers(ClampChannels(mInstance->GetEffect().inputCount), ClampChannels(mInstance->GetEffect().outputCount)),
      mBuses(Vst2Buses::Read(*mInstance, mBuffers.GetInputCount(), mBuffers.GetOutputCount())),
      mIsRunning(false),
      mSampleRate(Vst2Host::kSampleRate),
      mBlockSize(Vst2Host::kBlockSize),
      mSoundThread(std::thread::id()),
      mEditor(nullptr),
      mConnection(mInstance->GetEffect(), *this) {}

Vst2AudioFilter::~Vst2AudioFilter() { StopProcessing(); }

int Vst2AudioFilter::GetParameterCount() const {
    return std::clamp(mInstance->GetEffect().parameterCount, 0, PluginComponentInfo::kMaxParameters);
}

boost::intrusive_ptr<AudioFilterParameterInfo> Vst2AudioFilter::GetParameterInfo(int index) const {
    return new AudioFilterParameterInfo(GetParameterText(vst2::kGetParameterName, index),
                                        GetParameterText(vst2::kGetParameterLabel, index));
}

float Vst2AudioFilter::GetParameterValue(int index) const {
    vst2::Effect& effect = mInstance->GetEffect();
    if (!HasParameter(index) || effect.getParameter == nullptr) return 0.0f;
    float value = 0.0f;
    const bool answered = Try([&] { value = effect.getParameter(&effect, index); });
    return answered && std::isfinite(value) ? std::clamp(value, 0.0f, 1.0f) : 0.0f;
}

void Vst2AudioFilter::SetParameterValue(int index, float value) {
    vst2::Effect& effect = mInstance->GetEffect();
    if (!HasParameter(index) || effect.setParameter == nullptr || std::isnan(value)) return;
    Try([&] { effect.setParameter(&effect, index, std::clamp(value, 0.0f, 1.0f)); });
}

ustring Vst2AudioFilter::GetParameterValueString(int index) const {
    return GetParameterText(vst2::kGetParameterDisplay, index);
}

AudioFilter::State Vst2AudioFilter::GetState() const {
    const boost::intrusive_ptr<const AudioFilter> self(this);
    const std::optional<StateEnvelope> state = Vst2State::Read(*mInstance);
    return state ? state->Pack(mComponentId) : State();
}

bool Vst2AudioFilter::SetState(const State& bytes) {
    // The effect may run the event loop, or whoever is told may let go of the filter.
    const boost::intrusive_ptr<AudioFilter> self(this);
    const std::optional<StateEnvelope> state = StateEnvelope::Unpack(bytes, mComponentId);
    if (!state || !Vst2State::IsFit(*state, *mInstance)) return false;
    bool isTaken = false;
    {
        const BlockGate::Closed closed(mGate);
        if (!closed.IsFirst()) return false;
        isTaken = Vst2State::Write(*state, *mInstance);
    }
    GetStateChangedSignal()();
    return isTaken;
}

// An effect may change its mind while its editor is open; who opened it must still find that there is one to close.
bool Vst2AudioFilter::HasEditor() const {
    return mEditor != nullptr || (mInstance->GetEffect().flags & vst2::kHasEditor) != 0;
}

boost::intrusive_ptr<AudioFilterEditor> Vst2AudioFilter::GetEditor() {
    if (mEditor == nullptr && HasEditor()) mEditor = new Vst2Editor(*this);
    return mEditor;
}

void Vst2AudioFilter::GetBusConfiguration(AudioFilterBusList& inputs, AudioFilterBusList& outputs) const {
    inputs = mBuses.inputs;
    outputs = mBuses.outputs;
}

bool Vst2AudioFilter::StartEffect(double sampleRate, int maximumFrames) {
    if (!FitsChannels() || !mBuffers.Allocate(maximumFrames)) return false;
    mSampleRate = sampleRate;
    mBlockSize = maximumFrames;
    // Before the calls: should one of them throw, the others are taken back all the same.
    mIsRunning = true;
    const bool started = Try([&] {
        mInstance->Dispatch(vst2::kSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRate));
        mInstance->Dispatch(vst2::kSetBlockSize, 0, maximumFrames);
        mInstance->Dispatch(vst2::kMainsChanged, 0, 1);
        mInstance->Dispatch(vst2::kStartProcess);
    });
    if (!started) StopEffect();
    return started;
}

void Vst2AudioFilter::StopEffect() {
    if (!mIsRunning) return;
    mIsRunning = false;
    Try([this] { mInstance->Dispatch(vst2::kStopProcess); });
    Try([this] { mInstance->Dispatch(vst2::kMainsChanged, 0, 0); });
    mBuffers.Free();
}

void Vst2AudioFilter::ProcessEffect(const float* const* inputs, float* const* outputs, int frames) {
    if (frames <= 0) return;
    // Always: an effect may leave some of its outputs alone, have fewer now, or add to what is there.
    ClearOutputs(outputs, frames);
    const BlockGate::Block block(mGate);
    if (!block.IsInside() || !mIsRunning || frames > mBuffers.GetMaximumFrames() || !FitsChannels()) return;
    const vst2::Effect& effect = mInstance->GetEffect();
    mBuffers.Load(inputs, outputs, frames, ClampChannels(effect.inputCount), ClampChannels(effect.outputCount));
    mSoundThread = std::this_thread::get_id();
    const bool done = RunEffect(frames);
    mSoundThread = std::thread::id();
    if (!done) ClearOutputs(outputs, frames);
}

vst2::ProcessLevel Vst2AudioFilter::GetProcessLevel() const noexcept {
    return mSoundThread.load() == std::this_thread::get_id() ? vst2::kLevelRealtime : vst2::kLevelUser;
}

bool Vst2AudioFilter::RequestEditorSize(std::intptr_t width, std::intptr_t height) noexcept {
    return mSizeRequests.Request(width, height);
}

bool Vst2AudioFilter::HasParameter(int index) const { return index >= 0 && index < GetParameterCount(); }

ustring Vst2AudioFilter::GetParameterText(vst2::EffectOperation operation, int index) const {
    ustring text;
    if (HasParameter(index)) Try([&] { text = mInstance->GetTextOf(operation, index); });
    return text;
}

bool Vst2AudioFilter::FitsChannels() const {
    const vst2::Effect& effect = mInstance->GetEffect();
    return effect.inputCount <= PluginComponentInfo::kMaxChannels &&
           effect.outputCount <= PluginComponentInfo::kMaxChannels;
}

bool Vst2AudioFilter::RunEffect(int frames) {
    vst2::Effect& effect = mInstance->GetEffect();
    const bool replaces = (effect.flags & vst2::kCanReplace) != 0 || effect.processAccumulating == nullptr;
    // Effects from before version 2.4 have a `process` that does nothing when they do not announce it.
    vst2::ProcessFloat process = replaces ? effect.process : effect.processAccumulating;
    if (process == nullptr) process = effect.processAccumulating;
    if (process == nullptr) return false;
    return Try([&] { process(&effect, mBuffers.GetInputs(), mBuffers.GetOutputs(), frames); });
}

void Vst2AudioFilter::ClearOutputs(float* const* outputs, int frames) const {
    for (int channel = 0; channel < mBuffers.GetOutputCount(); ++channel) {
        std::fill_n(outputs[channel], frames, 0.0f);
    }
}

}  // namespace zelaudiofilterhost
