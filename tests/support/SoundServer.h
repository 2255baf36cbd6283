#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/Program.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// A PulseAudio server of the test's own, which has no device until it is given one. While it lives, the programs that
/// are started, and this one if it has not played before, find it and no other.
class SoundServer {
public:
    SoundServer();
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    /// False where PulseAudio is not installed or does not start: tests skip themselves.
    bool IsThere() const { return mProgram != nullptr; }

    /// Gives it a device that plays into nothing, in real time.
    void AddDevice(const std::string& name);
    /// Takes all devices away, also from who plays on them.
    void RemoveDevices();

    /// Records what a device plays, as frames of two channels of 32-bit floats and 48000 Hz, until the program is
    /// ended.
    std::unique_ptr<Program> Record(const std::string& device);

private:
    int Control(const std::vector<std::string>& arguments);

    ThrowAwayFolder mFolder;
    std::vector<std::string> mEnvironment;
    std::unique_ptr<Program> mProgram;
};

}  // namespace zeltests
