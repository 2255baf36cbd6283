#include "Vst3Processor.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

#include "PluginCall.h"

namespace zelaudiofilterhost {

using Steinberg::int32;
using Steinberg::kResultOk;
namespace Vst = Steinberg::Vst;

namespace {

/// 256 MiB: the longest blocks with 64 channels, or 65,536 frames with the most channels.
constexpr std::size_t kMaxInputSamples = std::size_t(1) << 26;
/// How many parameters a block can change.
constexpr std::size_t kLeastChanges = 64;
constexpr std::size_t kMostChanges = 1 << 16;

Vst::ProcessContext MakeContext(double sampleRate, Steinberg::int64 framesSoFar) {
    Vst::ProcessContext context = {};
    context.state =
        Vst::ProcessContext::kTempoValid | Vst::ProcessContext::kTimeSigValid | Vst::ProcessContext::kContTimeValid;
    context.sampleRate = sampleRate;
    context.continousTimeSamples = framesSoFar;
    context.tempo = 120.0;
    context.timeSigNumerator = 4;
    context.timeSigDenominator = 4;
    return context;
}

}  // namespace

Vst3Processor::Vst3Processor(Vst::IComponent& component, Vst3ParameterMailbox& toProcessor,
                             Vst3ParameterMailbox& fromProcessor)
    : mComponent(component), mToProcessor(toProcessor), mFromProcessor(fromProcessor) {
    CallPlugin("when it was opened", [this] {
        mProcessor = Vst3Ptr<Vst::IAudioProcessor>::Query(&mComponent, Vst::IAudioProcessor_iid);
        if (!mProcessor) throw PluginLoadError("its effect processes no audio");
        mLayout = Vst3BusLayout::Settle(mComponent, *mProcessor.Get());
    });
}

Vst3Processor::~Vst3Processor() { Stop(); }

void Vst3Processor::AdoptLayout(const zelmediatypes::AudioChannelLayout& layout) {
    CallPluginQuietly([this, &layout] { mLayout.Ask(mComponent, *mProcessor.Get(), layout); });
    // Also when it threw: what it did before that counts.
    CallPluginQuietly([this] { mLayout = Vst3BusLayout::Settle(mComponent, *mProcessor.Get()); });
}

bool Vst3Processor::Start(double sampleRate, int maximumFrames, int parameterCount) {
    Stop();
    if (!Reserve(maximumFrames, parameterCount)) return false;
    bool started = false;
    CallPluginQuietly([&] { started = Activate(sampleRate, maximumFrames); });
    if (!started) {
        Stop();
        return false;
    }
    mSampleRate = sampleRate;
    mFramesSoFar = 0;
    mRunning.store(true, std::memory_order_release);
    return true;
}

void Vst3Processor::Stop() {
    mRunning.store(false, std::memory_order_release);
    const Stage stage = std::exchange(mStage, Stage::kStopped);
    if (stage >= Stage::kProcessing) CallPluginQuietly([this] { mProcessor->setProcessing(false); });
    if (stage >= Stage::kActive) CallPluginQuietly([this] { mComponent.setActive(false); });
    if (stage >= Stage::kBusesOn) CallPluginQuietly([this] { mLayout.Activate(mComponent, false); });
}

bool Vst3Processor::Reserve(int maximumFrames, int parameterCount) {
    mMaximumFrames = static_cast<std::size_t>(maximumFrames);
    const auto channels = static_cast<std::size_t>(mLayout.CountChannels(Vst::kInput));
    if (channels * mMaximumFrames > kMaxInputSamples) return false;
    const std::size_t changes = std::clamp(static_cast<std::size_t>(parameterCount), kLeastChanges, kMostChanges);
    try {
        mInputs.Set(mLayout.inputs);
        mOutputs.Set(mLayout.outputs);
        mInputSamples.assign(channels * mMaximumFrames, 0.0f);
        mInputChanges.Reserve(changes);
        mOutputChanges.Reserve(changes);
        mFromProcessor.Reserve(2 * changes);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool Vst3Processor::Activate(double sampleRate, int maximumFrames) {
    if (!Vst3BusLayout::Settle(mComponent, *mProcessor.Get()).HasSameChannels(mLayout)) return false;
    if (!Setup(sampleRate, maximumFrames)) return false;
    // Each is noted before it is called: an effect that throws on the way has begun.
    mStage = Stage::kBusesOn;
    mLayout.Activate(mComponent, true);
    mStage = Stage::kActive;
    if (mComponent.setActive(true) != kResultOk) return false;
    mStage = Stage::kProcessing;
    // Only told: effects that have nothing to do then answer this and that.
    mProcessor->setProcessing(true);
    return true;
}

bool Vst3Processor::Setup(double sampleRate, int maximumFrames) {
    if (mProcessor->canProcessSampleSize(Vst::kSample32) != Steinberg::kResultTrue) return false;
    Vst::ProcessSetup setup = {};
    setup.processMode = Vst::kRealtime;
    setup.symbolicSampleSize = Vst::kSample32;
    setup.maxSamplesPerBlock = maximumFrames;
    setup.sampleRate = sampleRate;
    return mProcessor->setupProcessing(setup) == kResultOk;
}

void Vst3Processor::Process(const float* const* inputs, float* const* outputs, int frames) {
    if (frames <= 0) return;
    const auto count = static_cast<std::size_t>(frames);
    // Silent before it is asked, because effects leave out outputs that they have nothing for.
    Silence(outputs, count);
    const BlockGate::Block block(mGate);
    if (!block.IsInside() || !mRunning.load(std::memory_order_acquire) || count > mMaximumFrames) return;
    Prepare(inputs, outputs, count);
    if (!Call(count)) {
        Silence(outputs, count);
        return;
    }
    mOutputs.ForEachSilent([outputs, count](std::size_t channel) { std::fill_n(outputs[channel], count, 0.0f); });
    mOutputChanges.ForEach([this](Vst::ParamID id, double value) { mFromProcessor.Put(id, value); });
}

void Vst3Processor::Prepare(const float* const* inputs, float* const* outputs, std::size_t frames) {
    // Effects may work in place, and the caller keeps its inputs.
    for (std::size_t i = 0; i < mInputs.GetChannelCount(); ++i) {
        std::copy_n(inputs[i], frames, &mInputSamples[i * mMaximumFrames]);
    }
    mInputs.Fill([this](std::size_t channel) { return &mInputSamples[channel * mMaximumFrames]; });
    mOutputs.Fill([outputs](std::size_t channel) { return outputs[channel]; });
    mInputChanges.Clear();
    mOutputChanges.Clear();
    mToProcessor.Take(mInputChanges.GetRoom(), [this](Vst::ParamID id, double value) { mInputChanges.Add(id, value); });
}

bool Vst3Processor::Call(std::size_t frames) {
    Vst::ProcessContext context = MakeContext(mSampleRate, mFramesSoFar);
    mFramesSoFar += static_cast<Steinberg::int64>(frames);
    Vst::ProcessData data;
    data.processMode = Vst::kRealtime;
    data.symbolicSampleSize = Vst::kSample32;
    data.numSamples = static_cast<int32>(frames);
    data.numInputs = mInputs.GetBusCount();
    data.numOutputs = mOutputs.GetBusCount();
    data.inputs = mInputs.GetBuses();
    data.outputs = mOutputs.GetBuses();
    data.inputParameterChanges = &mInputChanges;
    data.outputParameterChanges = &mOutputChanges;
    data.processContext = &context;
    bool processed = false;
    CallPluginQuietly([&] { processed = mProcessor->process(data) == kResultOk; });
    return processed;
}

void Vst3Processor::Silence(float* const* outputs, std::size_t frames) const {
    const int channels = mLayout.CountChannels(Vst::kOutput);
    for (int i = 0; i < channels; ++i) std::fill_n(outputs[i], frames, 0.0f);
}

}  // namespace zelaudiofilterhost
