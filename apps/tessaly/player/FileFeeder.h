#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <zelaudiofilterhost/SoundThreadValue.h>

#include "ChannelBuffers.h"
#include "SoundRing.h"
#include "TrackReader.h"

namespace tessaly {

/// Has the sound of a track and its side-chain ready for the sound thread, seconds ahead; reads the files on a thread
/// of its own. Main thread but for Read.
///
/// Another position is read ahead beside what is being played, which goes on meanwhile; the sound thread then goes over
/// from one block to the next. So there is no gap, and nothing of before is heard afterwards.
class FileFeeder {
public:
    /// How far ahead it is, but for sounds of very many channels or samples a second, where kMaxRingSize is less.
    static constexpr int kSecondsAhead = 3;
    static constexpr std::size_t kMaxRingSize = std::size_t(64) << 20;  ///< bytes

    /// How the sound thread fares.
    enum Kind {
        kNotYet,  ///< nothing was read yet: nothing to play
        kSound,
        kLate,   ///< sound should be there and is not: the disk is too slow
        kEnd,    ///< the sound is over
        kFailed  ///< the file can be read up to here and no further
    };
    struct Reading {
        Kind kind = kNotYet;
        int frames = 0;  ///< that are sound; with kSound all, otherwise fewer than were asked for
    };

    /// Opens the files and starts to read at a frame of them. Throws AudioFileError.
    FileFeeder(const std::string& soundPath, const std::string& sideChainPath, std::int64_t position);
    /// Not while a Read is under way.
    ~FileFeeder();
    FileFeeder(const FileFeeder&) = delete;
    FileFeeder& operator=(const FileFeeder&) = delete;

    const TrackReader& GetTrack() const { return *mTrack; }  ///< for what it says of itself alone

    /// From 0 to the sound's frame count; what is outside is moved to the nearer end.
    void Seek(std::int64_t position);
    /// Where the sound thread is, or, until it has gone there, where it was sent.
    std::int64_t GetPosition() const;
    /// What the sound thread got last; kNotYet until it is where it was sent.
    Kind GetState() const;
    /// Whether the sound thread, when it asks next, finds itself where it was sent.
    bool IsReady() const;
    /// Why it cannot read on: the text of what was thrown; empty as long as it can.
    std::string GetTrouble() const;

    /// Takes the next `frames` frames: `channels` has one pointer per channel of the track and its side-chain. At the
    /// end the sound begins again when it loops, and is over otherwise. Sound thread; waits for nobody.
    Reading Read(float* const* channels, int frames, bool loops);

private:
    /// The sound from one position on.
    struct Stretch;
    typedef std::shared_ptr<Stretch> StretchPtr;

    void Run();
    StretchPtr WaitForWork(StretchPtr stretch);
    StretchPtr MakeStretch(std::int64_t position, unsigned number) const;
    void Fill(Stretch& stretch, std::size_t frames);
    bool FillOnce(Stretch& stretch);
    float* const* GetChunkFrom(int frame);
    void Fail(Stretch& stretch, const std::string& trouble);
    Reading ReadFrom(Stretch& stretch, float* const* channels, int frames, bool loops) const;

    const std::unique_ptr<TrackReader> mTrack;  ///< the reading thread's
    const std::int64_t mFrameCount;
    const std::size_t mChannelCount;
    ChannelBuffers mChunk;           ///< the reading thread's
    std::vector<float*> mChunkRest;  ///< pointers into it

    mutable std::mutex mMutex;  ///< of what the main thread and the reading thread share; never the sound thread
    std::condition_variable mWakeUp;
    std::int64_t mWantedPosition;
    unsigned mWantedNumber;  ///< of the stretch that begins there
    std::string mTrouble;
    bool mStops;

    zelaudiofilterhost::SoundThreadValue<StretchPtr> mStretch;  ///< the reading thread publishes it
    std::atomic<unsigned> mReadyNumber;                         ///< of the last stretch that was published
    std::atomic<unsigned> mPlayedNumber;                        ///< of the stretch that is played
    std::atomic<std::int64_t> mPlayedPosition;
    std::atomic<Kind> mPlayedKind;
    std::thread mThread;
};

}  // namespace tessaly
