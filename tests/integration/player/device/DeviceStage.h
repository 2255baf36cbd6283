#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "../../render/Sound.h"
#include "Player.h"
#include "Session.h"
#include "support/SoundServer.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// The server that this program's tests share.
void SetSoundServer(SoundServer* server);
SoundServer& GetSoundServer();

/// A player of a session, on a device of its own; skips the test where there can be none.
class DeviceStage : public testing::Test {
protected:
    DeviceStage();
    ~DeviceStage() override;
    void SetUp() override;

    /// Waits for a condition while the main loop runs.
    bool RunUntil(const std::function<bool()>& condition);
    /// Gives the server the device, and waits until the program knows; or the other way round.
    void ConnectDevice();
    void DisconnectDevice();

    /// Writes a file into the test's folder.
    std::string Write(const std::string& name, const Sound& sound);

    ThrowAwayFolder mFolder;
    ThrowAwayPreferences mPreferences;
    tessaly::Session mSession;
    tessaly::Player mPlayer;
    std::vector<std::string> mTroubles;
    int mStateChanges;
};

}  // namespace zeltests
