#pragma once

#include <memory>

#include <zelcore/ustring.h>

namespace tessaly {

class SoundEngine;

/// The system's audio device, playing what an engine renders; its sound thread is its own. What the device missed is
/// noted with the engine as lost. Main thread.
class SoundDevice {
public:
    enum Result {
        kStarted,
        kNoDevice,       ///< there is none, or this build of the program cannot use any
        kRefusesFormat,  ///< it does not take the sound's sample rate, in no way that we know
        kFails
    };

    SoundDevice();
    /// Stops.
    ~SoundDevice();
    SoundDevice(const SoundDevice&) = delete;
    SoundDevice& operator=(const SoundDevice&) = delete;

    /// Plays on the default device until Stop. The engine's sound has so many samples a second; the engine stays until
    /// then. Stops what was playing.
    Result Start(SoundEngine& engine, int sampleRate);
    /// The engine is not called any more when it returns, and not again. Harmless when stopped.
    void Stop();

    /// Frames from the engine to the ear: what was rendered is heard when as many more have been.
    int GetBufferedFrames() const;
    /// Whether the device went away or takes no more sound; asked a few times a second while it plays.
    bool HasFailed();

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;  ///< null while stopped
};

}  // namespace tessaly
