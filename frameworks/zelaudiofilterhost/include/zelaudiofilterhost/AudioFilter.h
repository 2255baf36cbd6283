#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <boost/noncopyable.hpp>
#include <zelcore/RefCountedObject.h>
#include <zelcore/Signals.h>
#include <zelcore/ustring.h>

#include <zelaudiofilterhost/AudioFilterBusDescription.h>
#include <zelaudiofilterhost/AudioFilterParameterInfo.h>
#include <zelaudiofilterhost/ChannelMap.h>
#include <zelaudiofilterhost/Export.h>

namespace zelaudiofilterhost {

class AudioFilterEditor;
class ChannelRouting;

/// One live audio filter: a plug-in instance in a track's effect chain. Held by intrusive pointer; the last one ends
/// the plug-in, on the main thread.
///
/// Everything runs on the main thread but Process and ProcessEffect, which are the sound thread's. A plug-in that
/// throws is answered for: its exception never comes out, the call then has no effect or gives the fall-back that it
/// names.
///
/// Two sets of channels meet here. The target channels are the track's: those of its layout, and behind them those of
/// its side-chain. The effect channels are the filter's own, of all its buses. The channel maps, one per direction, say
/// which effect channel is connected with which target channel, and Process carries the sound accordingly.
class ZELAUDIOFILTERHOST_API AudioFilter : public zelcore::utility::RefCountedObject, private boost::noncopyable {
public:
    /// The two sides of a filter.
    enum Direction { kInput = 0, kOutput = 1 };

    /// Told which direction's map changed, the map before and the map now.
    typedef boost::signal<void(Direction, const ChannelMap&, const ChannelMap&)> ChannelMapChangedSignal;
    /// Told nothing: ask the filter for its track now.
    typedef boost::signal<void()> TargetFormatChangedSignal;
    /// Told nothing: the state is what GetState gives now.
    typedef boost::signal<void()> StateChangedSignal;

    /// Target channels that a filter can have, those of the side-chain included.
    static constexpr std::size_t kMaxTargetChannels = 256;

    /// Which component this is an instance of: PluginComponentInfo::componentId.
    virtual ustring GetComponentID() const = 0;
    /// The component's name, for people.
    virtual ustring GetName() const = 0;

    // Parameters

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

    // State

    /// What is kept of a filter between two runs of the host: bytes that only a filter of the same component reads.
    typedef std::vector<std::uint8_t> State;
    /// The most bytes that a state may have.
    static constexpr std::size_t kMaxStateSize = std::size_t(64) << 20;

    /// Everything that the plug-in keeps of itself: its own state where it has one, its parameters' values otherwise.
    /// Empty when the plug-in fails, or has more than kMaxStateSize of it. Channel maps and format are the host's to
    /// keep. Empty unless overridden.
    virtual State GetState() const;
    /// Gives the plug-in back what GetState gave, of this or of an earlier instance, perhaps of another version of the
    /// plug-in. False, and nothing changed, for bytes that no GetState of this component gave; false also when the
    /// plug-in refuses or throws, it is then in whatever state it left itself in. Parameters' values and texts are the
    /// new ones afterwards, and who listens to them is told. Also while started: no block is processed meanwhile, those
    /// that come are silent. From within Process it is refused. False unless overridden.
    virtual bool SetState(const State& state);
    /// Fired when SetState has given the plug-in a state, whether it took it or not: each parameter may be another one.
    StateChangedSignal& GetStateChangedSignal() { return mStateChanged; }

    // The editor

    /// Whether the filter has an editor of its own. False unless overridden.
    virtual bool HasEditor() const;
    /// The filter's own editor: the one that somebody holds already, else a new one. Null when it has none or when it
    /// cannot be made. It holds the filter.
    virtual boost::intrusive_ptr<AudioFilterEditor> GetEditor();

    // Channels

    /// The filter's own buses as they are now. At most PluginComponentInfo::kMaxBuses and kMaxChannels in each
    /// direction.
    virtual void GetBusConfiguration(AudioFilterBusList& inputs, AudioFilterBusList& outputs) const = 0;
    /// Number of effect channels: all channels of all buses of that direction.
    int GetEffectChannelCount(Direction direction) const;

    /// Puts the filter into a track with these channels and this side-chain, which has no channels where the track has
    /// none. A filter that can work in several layouts is asked to take the track's; both maps become the best fit, the
    /// side-chain is connected. Processing that has been started starts over; IsProcessing tells whether the filter
    /// took it. A side-chain that is only called by another name keeps sound and maps. False, and nothing changed, for
    /// more than kMaxTargetChannels. Harmless for a format that the filter has already: the maps stay as they are then.
    /// Fires the target-format signal, then that of each map that changed. Never while a Process is under way.
    bool SetTargetFormat(const zelmediatypes::AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain);
    /// The track's main channels; none before the first SetTargetFormat.
    const zelmediatypes::AudioChannelLayout& GetChannelMapTargetChannelLayout() const;
    /// The track's side-chain; without channels where there is none.
    const AudioFilterBusDescription& GetSideChainTargetBus() const;

    /// The map of a direction, with an entry for each effect channel.
    const ChannelMap& GetChannelMap(Direction direction) const;
    /// Replaces a whole map. Entries of effect channels that the filter does not have are left out, those that are
    /// missing or name a target channel that there is not are not connected. Side-chain channels are targets of inputs
    /// alone. Takes effect with the next block, also in the middle of processing. Fires if the map is another one now.
    void SetChannelMap(const ChannelMap& map, Direction direction);
    /// Connects one effect channel with one target channel, or with none (kNotConnected). The target channel is taken
    /// from whichever effect channels of that direction had it: a choice moves a connection and never doubles it. An
    /// effect channel that is not there changes nothing, a target channel that is not there disconnects. Otherwise like
    /// SetChannelMap.
    void AssignChannelMapping(Direction direction, int effectChannel, int targetChannel);
    /// The connections that a sound engineer would make first between buses of one direction and a track:
    /// - Channels of auxiliary buses are not connected.
    /// - A channel goes where the track has the same label. Mono and center are one place here.
    /// - On a mono track, left and right of the first main bus both have the track's one channel: fed from it, and
    ///   mixed into it.
    /// - What is left goes by its position among the main channels, where at least one of the two has no place of its
    ///   own: it is discrete or mono.
    /// - No target channel is given twice but for the mono track's.
    static ChannelMap BuildBestFitChannelMap(const AudioFilterBusList& buses,
                                             const zelmediatypes::AudioChannelLayout& targetLayout);
    /// Connects the inputs of the auxiliary buses with the track's side-chain: by label first, then by position; one
    /// channel of side-chain feeds them all. With `replaceExisting` those that are connected already are
    /// connected anew, and so disconnected where there is no side-chain for them. Fires like SetChannelMap.
    void AutoConnectSideChainChannels(bool replaceExisting);

    /// Fired after a map changed, whoever changed it; once for each direction.
    ChannelMapChangedSignal& GetChannelMapChangedSignal();
    /// Fired after the track's channels or its side-chain changed.
    TargetFormatChangedSignal& GetTargetFormatChangedSignal();

    // Sound

    /// Makes the filter ready to process blocks of at most `maximumFrames` frames (1 to 1 << 20) at `sampleRate` Hz
    /// (1 to 10 million). Again with other numbers starts over. False when the filter refuses or memory is short; it is
    /// then stopped.
    bool StartProcessing(double sampleRate, int maximumFrames);
    /// Whether it is started.
    bool IsProcessing() const { return mIsStarted; }
    /// Back to where StartProcessing came from; harmless when stopped. Never while a Process is under way.
    void StopProcessing();
    /// Processes one block of the track. `inputs` has one pointer per target channel, `outputs` one per main target
    /// channel, each to `frames` samples. An output may be the very memory of the input of the same channel; otherwise
    /// none is shared and inputs are not changed.
    ///
    /// An effect channel that is not connected reads silence, or is not heard. A main channel connected with several
    /// effect outputs gets their mean, so that two sides that carry the same are as loud as one; one that only feeds
    /// the filter becomes silent; one connected in neither direction passes as it is. While stopped, or with more
    /// frames than announced, every main channel passes as it is; when the plug-in throws, what it should have
    /// given is silent. Sound thread; takes no locks and allocates nothing of its own.
    void Process(const float* const* inputs, float* const* outputs, int frames);
    /// Processes one block through the filter's own channels, past the maps: `inputs` and `outputs` hold one pointer
    /// per effect channel, each to `frames` samples, none of them shared between the two (two inputs may be the same
    /// memory); the inputs are not changed. While stopped, with more frames than announced, or when the plug-in throws,
    /// the outputs are silent. Sound thread; takes no locks and allocates nothing of its own.
    virtual void ProcessEffect(const float* const* inputs, float* const* outputs, int frames) = 0;

protected:
    AudioFilter();
    ~AudioFilter() override;

    /// What StartProcessing and StopProcessing do with the effect itself. Numbers are in range, and StopEffect is
    /// called before the filter is asked to start again. A derived class's destructor calls StopProcessing first.
    virtual bool StartEffect(double sampleRate, int maximumFrames) = 0;
    /// The reverse of StartEffect.
    virtual void StopEffect() = 0;
    /// Asks the effect to give its main buses these channels; it may refuse. Not while it is started. Does nothing
    /// unless overridden.
    virtual void AdoptLayout(const zelmediatypes::AudioChannelLayout& layout);

private:
    void SyncEffectChannels() const;
    void MoveTo(const zelmediatypes::AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain);

    StateChangedSignal mStateChanged;
    const std::unique_ptr<ChannelRouting> mRouting;
    bool mIsStarted;
    double mSampleRate;  ///< of the last start
    int mMaximumFrames;
};

}  // namespace zelaudiofilterhost
