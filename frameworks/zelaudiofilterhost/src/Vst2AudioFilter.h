#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/PluginComponentInfo.h>

#include "BlockGate.h"
#include "EditorSizeRequests.h"
#include "Vst2Buses.h"
#include "Vst2ChannelBuffers.h"
#include "Vst2HostClient.h"
#include "Vst2HostConnection.h"
#include "Vst2Instance.h"
#include "Vst2Module.h"

namespace zelaudiofilterhost {

class Vst2Editor;

/// Makes a filter of the VST2 module at the full path `path`: the component of that description, which is the shell's
/// component `subcomponent` when that is not empty. Throws PluginLoadError, also when another component is found there
/// now. Main thread.
boost::intrusive_ptr<AudioFilter> MakeVst2AudioFilter(const std::string& path, const PluginComponentInfo& component,
                                                      const zelcore::ustring& subcomponent);

/// A VST2 effect at work. Parameters are set straight in the effect, on the main thread and in the middle of a block
/// too, as effects of this format expect.
///
/// Its channels, and the buses that Vst2Buses reads in them, are those that the effect had when it was made; one that
/// has more later gets silence to read and somewhere to write for the others, and one that claims more than
/// PluginComponentInfo::kMaxChannels is not started, or silent from then on. What it puts out is passed on as it is,
/// samples that are no numbers included: the sound path is no place to look at each.
class Vst2AudioFilter final : public AudioFilter, private Vst2HostClient {
public:
    /// Throws PluginLoadError.
    Vst2AudioFilter(const std::string& path, const PluginComponentInfo& component,
                    const zelcore::ustring& subcomponent);

    ustring GetComponentID() const override { return mComponentId; }
    ustring GetName() const override { return mName; }
    int GetParameterCount() const override;
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) const override;
    float GetParameterValue(int index) const override;
    void SetParameterValue(int index, float value) override;
    ustring GetParameterValueString(int index) const override;
    State GetState() const override;
    bool SetState(const State& state) override;
    bool HasEditor() const override;
    boost::intrusive_ptr<AudioFilterEditor> GetEditor() override;
    void GetBusConfiguration(AudioFilterBusList& inputs, AudioFilterBusList& outputs) const override;
    void ProcessEffect(const float* const* inputs, float* const* outputs, int frames) override;

    // The editor's side of it: the effect, what the effect asks for, and the end of an editor.
    const Vst2Instance& GetInstance() const { return *mInstance; }
    EditorSizeRequests& GetSizeRequests() { return mSizeRequests; }
    void ForgetEditor() { mEditor = nullptr; }

protected:
    ~Vst2AudioFilter() override;
    bool StartEffect(double sampleRate, int maximumFrames) override;
    void StopEffect() override;

private:
    double GetSampleRate() const noexcept override { return mSampleRate; }
    int GetBlockSize() const noexcept override { return mBlockSize; }
    vst2::ProcessLevel GetProcessLevel() const noexcept override;
    bool RequestEditorSize(std::intptr_t width, std::intptr_t height) noexcept override;

    bool HasParameter(int index) const;
    ustring GetParameterText(vst2::EffectOperation operation, int index) const;
    bool FitsChannels() const;
    bool RunEffect(int frames);
    void ClearOutputs(float* const* outputs, int frames) const;

    ustring mComponentId;
    ustring mName;
    // Each of these needs those before it until it has gone.
    std::unique_ptr<Vst2Module> mModule;
    std::unique_ptr<Vst2Instance> mInstance;
    Vst2ChannelBuffers mBuffers;
    Vst2Buses mBuses;  ///< of the channels that mBuffers has
    bool mIsRunning;
    std::atomic<double> mSampleRate;
    std::atomic<int> mBlockSize;
    std::atomic<std::thread::id> mSoundThread;  ///< while it is in the effect
    BlockGate mGate;                            ///< closed while the effect takes a state
    EditorSizeRequests mSizeRequests;
    Vst2Editor* mEditor;  ///< the one that somebody holds; it holds this filter
    Vst2HostConnection mConnection;
};

}  // namespace zelaudiofilterhost
