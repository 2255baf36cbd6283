#pragma once

#include <memory>
#include <optional>
#include <string>

#include <boost/intrusive_ptr.hpp>
#include <pluginterfaces/gui/iplugview.h>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/PluginComponentInfo.h>

#include "Vst3EditHandler.h"
#include "Vst3Instance.h"
#include "Vst3Parameters.h"
#include "Vst3Processor.h"
#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

class Vst3Editor;

/// A live VST3 effect.
class Vst3AudioFilter final : public AudioFilter {
public:
    /// Makes and opens `effectClass` of the module, which `component` describes. Throws PluginLoadError.
    Vst3AudioFilter(std::shared_ptr<Vst3Module> module, const Vst3Class& effectClass,
                    const PluginComponentInfo& component);

    ustring GetComponentID() const override { return mComponentId; }
    ustring GetName() const override { return mName; }
    int GetParameterCount() const override { return mParameters.GetCount(); }
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) const override {
        return mParameters.GetInfo(index);
    }
    float GetParameterValue(int index) const override { return mParameters.GetValue(index); }
    void SetParameterValue(int index, float value) override { mParameters.SetValue(index, value); }
    ustring GetParameterValueString(int index) const override { return mParameters.GetValueString(index); }
    State GetState() const override;
    bool SetState(const State& state) override;
    bool HasEditor() const override;
    boost::intrusive_ptr<AudioFilterEditor> GetEditor() override;
    void GetBusConfiguration(AudioFilterBusList& inputs, AudioFilterBusList& outputs) const override;
    void ProcessEffect(const float* const* inputs, float* const* outputs, int frames) override {
        mProcessor.Process(inputs, outputs, frames);
    }

    // The editor's side of it: the views that the controller makes, and the end of an editor.
    /// Null when it makes none that can be shown here.
    Vst3Ptr<Steinberg::IPlugView> MakeView() const;
    void ForgetEditor() { mEditor = nullptr; }

protected:
    ~Vst3AudioFilter() override;
    bool StartEffect(double sampleRate, int maximumFrames) override;
    void StopEffect() override { mProcessor.Stop(); }
    void AdoptLayout(const zelmediatypes::AudioChannelLayout& layout) override { mProcessor.AdoptLayout(layout); }

private:
    /// Tells the controller the values that the component has.
    void SynchroniseController();

    ustring mComponentId;
    ustring mName;
    // In this order: processing ends first, the plug-in may still report its edits while it is ended.
    Vst3Ptr<Vst3EditHandler> mHandler;
    Vst3Instance mInstance;
    /// Asking for a value hands the controller what the processor has told meanwhile.
    mutable Vst3Parameters mParameters;
    Vst3Processor mProcessor;
    /// Nothing as long as it is not known.
    mutable std::optional<bool> mHasEditor;
    Vst3Editor* mEditor;  ///< the one that somebody holds; it holds this filter
};

/// Makes a filter of the class that `component` names, from the module at the full path `path` (UTF-8). The class's id
/// says everything that the subcomponent says. Throws PluginLoadError. Main thread.
boost::intrusive_ptr<AudioFilter> MakeVst3AudioFilter(const std::string& path, const PluginComponentInfo& component,
                                                      const zelcore::ustring& subcomponent);

}  // namespace zelaudiofilterhost
