#pragma once

#include <boost/intrusive_ptr.hpp>
#include <boost/noncopyable.hpp>
#include <zelcore/RefCountedObject.h>
#include <zelcore/ustring.h>

#include <zelaudiofilterhost/AudioFilterParameterInfo.h>
#include <zelaudiofilterhost/Export.h>

namespace zelaudiofilterhost {

class AudioFilterEditor;

/// One live audio filter: a plug-in instance in a track's effect chain. Held by intrusive pointer; the last one ends
/// the plug-in, on the main thread.
///
/// Everything runs on the main thread but Process, which is the sound thread's. A plug-in that throws is answered for:
/// its exception never comes out, the call then has no effect or gives the fall-back that it names.
class ZELAUDIOFILTERHOST_API AudioFilter : public zelcore::utility::RefCountedObject, private boost::noncopyable {
public:
    enum Direction { kInput = 0, kOutput = 1 };

    /// Which component this is an instance of: PluginComponentInfo::componentId.
    virtual ustring GetComponentID() const = 0;
    /// The component's name, for people.
    virtual ustring GetName() const = 0;

    /// How many parameters the filter has now; from 0 to PluginComponentInfo::kMaxParameters. A plug-in may change it
    /// at any time; the operations below take an index that is not there (any more) as harmless.
    virtual int GetParameterCount() const = 0;
    /// Never null; for an index that is not there its texts are empty.
    virtual boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) const = 0;
    /// The normalised value, from 0 to 1; 0 for an index that is not there or a value that is no number.
    virtual float GetParameterValue(int index) const = 0;
    /// Sets the normalised value; what is outside 0 to 1 is moved to the nearer end, what is no number is ignored. The
    /// next block that is processed has it.
    virtual void SetParameterValue(int index, float value) = 0;
    /// The filter's own text for the current value, without its unit; fit to be shown, and empty where there is none.
    virtual ustring GetParameterValueString(int index) const = 0;

    /// Whether the filter has an editor of its own. False unless overridden.
    virtual bool HasEditor() const;
    /// The filter's own editor: the one that somebody holds already, else a new one. Null when it has none or when it
    /// cannot be made. It holds the filter.
    virtual boost::intrusive_ptr<AudioFilterEditor> GetEditor();

    /// Number of the filter's own channels, counted across all buses of that direction in bus order.
    virtual int GetEffectChannelCount(Direction direction) const = 0;

    /// Makes the filter ready to process blocks of at most `maximumFrames` frames (1 to 1 << 20) at `sampleRate` Hz
    /// (1 to 10 million). Again with other numbers starts over. False when the filter refuses; it is then stopped.
    virtual bool StartProcessing(double sampleRate, int maximumFrames) = 0;
    /// Back to where StartProcessing came from; harmless when stopped. Never while a Process is under way.
    virtual void StopProcessing() = 0;
    /// Processes one block through the filter's own channels: `inputs` and `outputs` hold one pointer per channel
    /// (GetEffectChannelCount), each to `frames` samples, none of them shared between the two; the inputs are not
    /// changed. While stopped, with more frames than announced, or when the plug-in throws, the outputs are silent.
    /// Sound thread; takes no locks and allocates nothing of its own.
    virtual void ProcessEffect(const float* const* inputs, float* const* outputs, int frames) = 0;

protected:
    AudioFilter();
    ~AudioFilter() override;
};

}  // namespace zelaudiofilterhost
