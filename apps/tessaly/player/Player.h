#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <zelcore/Signals.h>
#include <zelcore/ustring.h>

namespace tessaly {

class Session;

/// Plays a session's sound through its effects on the system's audio device, and follows the session's changes while it
/// does. Main thread; the sound has threads of its own, which wait neither for the main thread nor for a disk.
class Player {
public:
    typedef boost::signal<void()> Signal;
    typedef boost::signal<void(const zelcore::ustring&)> TroubleSignal;

    /// What became of the sound since playing began.
    struct Counts {
        std::uint64_t blocks = 0;  ///< processed
        std::uint64_t lost = 0;    ///< that came too late: from a disk, or for the device
    };

    /// The session outlives the player.
    explicit Player(Session& session);
    /// Stops.
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /// Plays on from the position; from the beginning when that is at the end. Nothing without a sound. Where there is
    /// no device, or it does not take the sound, the trouble signal says so and it stays stopped. An effect that
    /// refuses is passed by, which the trouble signal says once.
    void Play();
    /// Stops where it is.
    void Stop();
    bool IsPlaying() const;

    /// In frames of the sound. Also while it plays.
    void Seek(std::int64_t position);
    std::int64_t GetPosition() const;
    std::int64_t GetLength() const;
    int GetSampleRate() const;

    /// The loudest sample of each channel of the track since the last call, behind the effects; full scale is 1.
    /// Without channels when there is no sound.
    std::vector<float> TakePeaks();
    Counts GetCounts() const;

    /// It began to play, or stopped: by a call, at the end, or for trouble.
    Signal& GetStateChangedSignal();
    /// One localised sentence for the user. That there is no device is told once in a program's life.
    TroubleSignal& GetTroubleSignal();

private:
    class Impl;
    const std::unique_ptr<Impl> mImpl;
};

}  // namespace tessaly
