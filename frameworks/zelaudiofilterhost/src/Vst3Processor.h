#pragma once

#include <atomic>
#include <cstddef>
#include <vector>

#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <pluginterfaces/vst/ivstcomponent.h>
#include <pluginterfaces/vst/ivstprocesscontext.h>

#include "BlockGate.h"
#include "Vst3BusBuffers.h"
#include "Vst3BusLayout.h"
#include "Vst3ParameterChanges.h"
#include "Vst3ParameterMailbox.h"
#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

/// The sound side of one VST3 effect: starts it, feeds it blocks and parameter changes, stops it. Main thread but for
/// Process, which is never under way when any of the others is called. No exception of the plug-in's comes out but of
/// the constructor.
class Vst3Processor {
public:
    /// The component and the two mailboxes outlive the object; it receives from the one and sends to the other. Throws
    /// PluginLoadError.
    Vst3Processor(Steinberg::Vst::IComponent& component, Vst3ParameterMailbox& toProcessor,
                  Vst3ParameterMailbox& fromProcessor);
    ~Vst3Processor();
    Vst3Processor(const Vst3Processor&) = delete;
    Vst3Processor& operator=(const Vst3Processor&) = delete;

    /// The buses that Process takes as they are, whatever the effect has done with its own since.
    const Vst3BusLayout& GetLayout() const { return mLayout; }
    /// AudioFilter::AdoptLayout. GetLayout then is what the effect has made of it. While stopped.
    void AdoptLayout(const zelmediatypes::AudioChannelLayout& layout);

    /// AudioFilter::StartEffect for an effect of `parameterCount` parameters. An effect that has other numbers of
    /// channels by now than GetLayout is refused, too.
    bool Start(double sampleRate, int maximumFrames, int parameterCount);
    /// AudioFilter::StopEffect.
    void Stop();
    /// AudioFilter::ProcessEffect. Sound thread.
    void Process(const float* const* inputs, float* const* outputs, int frames);
    /// While it is closed, Process gives silence.
    BlockGate& GetGate() const { return mGate; }

private:
    /// How far Activate has come.
    enum class Stage { kStopped, kBusesOn, kActive, kProcessing };

    /// False when there is not enough memory, or only in reach of a plug-in that claims hundreds of channels.
    bool Reserve(int maximumFrames, int parameterCount);
    /// Each step is undone by Stop, whichever was the last.
    bool Activate(double sampleRate, int maximumFrames);
    bool Setup(double sampleRate, int maximumFrames);
    void Prepare(const float* const* inputs, float* const* outputs, std::size_t frames);
    bool Call(std::size_t frames);
    void Silence(float* const* outputs, std::size_t frames) const;

    Steinberg::Vst::IComponent& mComponent;
    Vst3ParameterMailbox& mToProcessor;
    Vst3ParameterMailbox& mFromProcessor;
    Vst3Ptr<Steinberg::Vst::IAudioProcessor> mProcessor;
    Vst3BusLayout mLayout;
    Vst3BusBuffers mInputs;
    Vst3BusBuffers mOutputs;
    Vst3ParameterChanges mInputChanges{Vst3ParameterChanges::Author::kHost};
    Vst3ParameterChanges mOutputChanges{Vst3ParameterChanges::Author::kPlugin};
    std::vector<float> mInputSamples;
    std::size_t mMaximumFrames = 0;
    double mSampleRate = 0.0;
    Steinberg::int64 mFramesSoFar = 0;
    Stage mStage = Stage::kStopped;
    std::atomic<bool> mRunning{false};
    mutable BlockGate mGate;  ///< closed by who only reads, too
};

}  // namespace zelaudiofilterhost
