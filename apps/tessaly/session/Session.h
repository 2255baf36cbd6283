#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <QUndoStack>

#include <zelcore/Signals.h>

#include "ChainEffect.h"
#include "SessionRecord.h"

namespace tessaly {

/// The document: a track with a sound file, perhaps a side-chain, and a chain of effects. What changes the chain can be
/// undone; an effect that was removed lives on in the undo stack, as it was. Main thread.
class Session {
public:
    typedef boost::signal<void()> Signal;
    static constexpr int kUndoLimit = 100;

    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // The files. Sounds are opened to be looked at, and played by somebody else.

    /// UTF-8; empty when there is none.
    const std::string& GetSoundPath() const { return mTrack.soundPath; }
    const std::string& GetSideChainPath() const { return mTrack.sideChainPath; }
    /// Takes another sound file; every effect gets the format of its channels, the chain stays. A side-chain of another
    /// sample rate, or that cannot be opened any more, is let go. Routing is kept where it fits. Throws AudioFileError;
    /// nothing has changed then. Not undone, and forgets what could be.
    void SetSound(const std::string& path);
    /// An empty path takes it away. Throws AudioFileError, also when its sample rate is not the sound's or there is no
    /// sound; nothing has changed then. Routing is kept where it fits. Not undone, and forgets what could be, as the
    /// routing of other channels is among that.
    void SetSideChain(const std::string& path);
    int GetSampleRate() const { return mTrack.sampleRate; }  ///< Hz; 0 without a sound
    const zelmediatypes::AudioChannelLayout& GetLayout() const { return mTrack.layout; }
    const zelaudiofilterhost::AudioFilterBusDescription& GetSideChainBus() const { return mTrack.sideChain; }

    bool IsLooping() const { return mIsLooping; }
    void SetLooping(bool looping);

    // The chain. Indexes that are not there change nothing.

    const std::vector<ChainEffectPtr>& GetEffects() const { return mEffects; }
    /// Puts a new effect before the one at `index`, or at the end. Throws std::runtime_error when its plug-in cannot be
    /// loaded or there are SessionFile::kMaxEffects.
    void Insert(std::size_t index, const zelaudiofilterhost::AudioFilterDescriptor& descriptor);
    void Remove(std::size_t index);
    /// Afterwards the effect is at `to`.
    void Move(std::size_t from, std::size_t to);
    void SetBypassed(std::size_t index, bool bypassed);
    /// Makes a change of routing that the user has made in an editor one that can be undone.
    void NoteChannelMapChange(const ChainEffectPtr& effect, zelaudiofilterhost::AudioFilter::Direction direction,
                              const zelaudiofilterhost::ChannelMap& before,
                              const zelaudiofilterhost::ChannelMap& after);
    /// Its texts are localised and name the effect ("Remove ZamComp").
    QUndoStack& GetUndoStack() { return mUndo; }

    // Keeping it

    /// The file that it is kept in, UTF-8; empty before the first save.
    const std::string& GetPath() const { return mPath; }
    /// Whether it differs from what was saved or loaded last: also when a plug-in's own state does, which is asked for.
    /// Where windows are does not count.
    bool IsModified() const;
    /// Whether something was changed since, without asking the plug-ins: what a title shows.
    bool IsMarkedChanged() const { return mHasLastingChange || !mUndo.isClean(); }
    /// Throws std::runtime_error with the reason; nothing has changed then.
    void Save(const std::string& path);
    /// Replaces everything by what the file holds. Effects whose plug-in is missing stay as such, sounds that cannot be
    /// opened stay named. Returns what the user should be told, one localised sentence each. Throws std::runtime_error
    /// when the file is no session; nothing has changed then.
    std::vector<zelcore::ustring> Load(const std::string& path);
    /// Back to an empty one.
    void Clear();

    // Who listens: the player and the windows.

    /// Before the track's format changes or effects are given up for good: whoever plays lets go of them within the
    /// call.
    Signal& GetBeforeFormatChangesSignal() { return mBeforeFormatChanges; }
    /// After it did: another sound, side-chain, or a whole other session.
    Signal& GetFormatChangedSignal() { return mFormatChanged; }
    /// Looping was switched on or off, or the session was saved.
    Signal& GetDetailsChangedSignal() { return mDetailsChanged; }
    /// Effects came, went, moved, or were bypassed. Also after a change of format.
    Signal& GetChainChangedSignal() { return mChainChanged; }

private:
    class ChainCommand;
    class BypassCommand;
    class MapCommand;

    /// The part that follows from the files: what the track and its side-chain are.
    struct Track {
        std::string soundPath;
        std::string sideChainPath;
        int sampleRate = 0;
        zelmediatypes::AudioChannelLayout layout;
        zelaudiofilterhost::AudioFilterBusDescription sideChain;
    };

    static Track OpenSound(const std::string& path);
    static void OpenSideChain(Track& track);
    static Track Reopen(const SessionRecord& record, std::vector<zelcore::ustring>& troubles);
    static SessionRecord MakeRecord(const Track& track, bool isLooping, const std::vector<ChainEffectPtr>& effects);
    /// Takes another track and chain; what could be undone is forgotten.
    void Replace(const Track& track, std::vector<ChainEffectPtr> effects);
    void SetFormatOf(const ChainEffectPtr& effect) const;
    void SetEffects(const std::vector<ChainEffectPtr>& effects);
    void PushChain(const char* keyAndDefault, const ChainEffectPtr& effect, const std::vector<ChainEffectPtr>& after);

    std::string mPath;
    Track mTrack;
    bool mIsLooping;
    bool mHasLastingChange;  ///< one that cannot be undone was made since it was saved or loaded
    std::vector<ChainEffectPtr> mEffects;
    SessionRecord mSaved;  ///< as it was saved or loaded last
    Signal mBeforeFormatChanges;
    Signal mFormatChanged;
    Signal mDetailsChanged;
    Signal mChainChanged;
    QUndoStack mUndo;
};

}  // namespace tessaly
