#include "DeviceStage.h"

#include <QAudioDevice>
#include <QCoreApplication>
#include <QMediaDevices>
#include <zelcore/Utf.h>

#include "support/WaitFor.h"

namespace zeltests {

namespace {

constexpr char kDevice[] = "ears";
SoundServer* sServer = nullptr;

}  // namespace

void SetSoundServer(SoundServer* server) { sServer = server; }

SoundServer& GetSoundServer() { return *sServer; }

DeviceStage::DeviceStage() : mPlayer(mSession), mStateChanges(0) {
    mPlayer.GetTroubleSignal().connect([this](const zelcore::ustring& text) {
        const zelcore::utf8string utf8 = zelcore::utility::UTF16to8(text);
        mTroubles.emplace_back(utf8.begin(), utf8.end());
    });
    mPlayer.GetStateChangedSignal().connect([this] { ++mStateChanges; });
}

DeviceStage::~DeviceStage() {
    mPlayer.Stop();
    if (GetSoundServer().IsThere() && !QMediaDevices::defaultAudioOutput().isNull()) DisconnectDevice();
}

void DeviceStage::SetUp() {
    if (!GetSoundServer().IsThere()) GTEST_SKIP() << "there is no PulseAudio here to play on";
}

bool DeviceStage::RunUntil(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(60), [] { QCoreApplication::processEvents(); });
}

void DeviceStage::ConnectDevice() {
    GetSoundServer().AddDevice(kDevice);
    ASSERT_TRUE(RunUntil([] { return QMediaDevices::defaultAudioOutput().id() == kDevice; }));
}

void DeviceStage::DisconnectDevice() {
    GetSoundServer().RemoveDevices();
    ASSERT_TRUE(RunUntil([] { return QMediaDevices::defaultAudioOutput().isNull(); }));
}

std::string DeviceStage::Write(const std::string& name, const Sound& sound) {
    WriteSound(mFolder.Path(name), sound);
    return mFolder.Path(name);
}

}  // namespace zeltests
