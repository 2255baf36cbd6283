#include "Player.h"

#include <algorithm>
#include <string>

#include <QTimer>
#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

#include "AudioFileError.h"
#include "AudioFileReader.h"
#include "LiveChain.h"
#include "Session.h"
#include "SoundDevice.h"
#include "SoundEngine.h"

namespace tessaly {

using zelcore::ustring;
using zelcore::config::Localize;
using zelcore::utility::FillPlaceholders;

namespace {

// Often enough for a stop at the end to be one.
constexpr int kLookMilliseconds = 30;

ustring ToText(const std::string& utf8) { return zelcore::utility::UTF8to16(utf8); }

std::int64_t ReadLength(const std::string& path) {
    if (path.empty()) return 0;
    try {
        return AudioFileReader(path).GetFrameCount();
    } catch (const AudioFileError&) {
        return 0;
    }
}

ustring Describe(SoundDevice::Result result, int sampleRate) {
    if (result == SoundDevice::kNoDevice)
        return Localize("$$$/tessaly/Player/NoDevice=There is no sound device to play on.");
    if (result == SoundDevice::kFails)
        return Localize("$$$/tessaly/Player/DeviceFails=The sound device cannot be used.");
    return FillPlaceholders(
        Localize("$$$/tessaly/Player/DeviceRefuses=The sound device does not take sound of @0 samples a second."),
        {ToText(std::to_string(sampleRate))});
}

/// A side-chain that the session names and could not open is none.
std::string GetSideChainPath(const Session& session) {
    return session.GetSideChainBus().GetLayout().empty() ? std::string() : session.GetSideChainPath();
}

/// One run of the sound, from Play to Stop. What is below uses what is above it.
struct Playback {
    Playback(const Session& session, std::int64_t position)
        : feeder(session.GetSoundPath(), GetSideChainPath(session), position),
          engine(feeder),
          chain(engine, session.GetSampleRate(), session.GetLayout(), session.GetSideChainBus()) {}

    /// Whether the files are still those that the session has looked at.
    bool Fits(const Session& session) const {
        const TrackReader& track = feeder.GetTrack();
        return track.GetSampleRate() == session.GetSampleRate() &&
               track.GetSoundChannelCount() == session.GetLayout().size() &&
               track.GetSideChainChannelCount() == session.GetSideChainBus().GetLayout().size();
    }

    FileFeeder feeder;
    SoundEngine engine;
    LiveChain chain;
    SoundDevice device;
};

}  // namespace

class Player::Impl {
public:
    explicit Impl(Session& session);

    void Play();
    void Stop();
    bool IsPlaying() const { return mPlayback != nullptr; }
    void Seek(std::int64_t position);
    std::int64_t GetPosition() const { return mPlayback ? mPlayback->feeder.GetPosition() : mPosition; }
    std::int64_t GetLength() const { return mLength; }
    int GetSampleRate() const { return mSession.GetSampleRate(); }
    std::vector<float> TakePeaks();
    Counts GetCounts() const;

    Signal stateChanged;
    TroubleSignal trouble;

private:
    ustring Start(LiveChain::Effects& refused);
    void Finish();
    void StopFor(const ustring& reason);
    void FollowChain();
    void FollowLooping();
    void TellRefused(const LiveChain::Effects& effects);
    void Look();
    void OnBeforeFormatChanges();
    void OnFormatChanged();

    Session& mSession;
    std::string mPath;  ///< of the sound that the position is in
    std::int64_t mPosition;
    std::int64_t mLength;
    bool mGoesOn;  ///< it played before the format changed
    Counts mCounts;
    std::unique_ptr<Playback> mPlayback;
    QTimer mTimer;
    boost::signals::scoped_connection mBeforeFormatChanges, mFormatChanged, mChainChanged, mDetailsChanged;
};

Player::Impl::Impl(Session& session)
    : mSession(session), mPath(session.GetSoundPath()), mPosition(0), mLength(ReadLength(mPath)), mGoesOn(false) {
    mTimer.setInterval(kLookMilliseconds);
    QObject::connect(&mTimer, &QTimer::timeout, [this] { Look(); });
    mBeforeFormatChanges = session.GetBeforeFormatChangesSignal().connect([this] { OnBeforeFormatChanges(); });
    mFormatChanged = session.GetFormatChangedSignal().connect([this] { OnFormatChanged(); });
    mDetailsChanged = session.GetDetailsChangedSignal().connect([this] { FollowLooping(); });
    mChainChanged = session.GetChainChangedSignal().connect([this] { FollowChain(); });
}

void Player::Impl::Play() {
    mGoesOn = false;
    if (IsPlaying() || mLength == 0) return;
    if (mPosition >= mLength) mPosition = 0;
    ustring reason;
    LiveChain::Effects refused;
    try {
        reason = Start(refused);
    } catch (const std::exception& error) {
        reason = FillPlaceholders(Localize("$$$/tessaly/Player/Unreadable=The sound cannot be played: @0"),
                                  {ToText(error.what())});
    }
    if (!IsPlaying()) {
        if (!reason.empty()) trouble(reason);
        return;
    }
    mTimer.start();
    stateChanged();
    TellRefused(refused);
}

/// Why it does not play then; empty when it does, or when there is nothing to say.
ustring Player::Impl::Start(LiveChain::Effects& refused) {
    auto playback = std::make_unique<Playback>(mSession, mPosition);
    if (!playback->Fits(mSession)) {
        return Localize(
            "$$$/tessaly/Player/FileChanged=The sound's file is not the one that was opened: open it again.");
    }
    playback->engine.SetLooping(mSession.IsLooping());
    refused = playback->chain.SetEffects(mSession.GetEffects());
    const SoundDevice::Result result = playback->device.Start(playback->engine, mSession.GetSampleRate());
    if (result == SoundDevice::kStarted) {
        mPlayback = std::move(playback);
        return {};
    }
    static bool sHasToldOfNoDevice = false;
    if (result == SoundDevice::kNoDevice && std::exchange(sHasToldOfNoDevice, true)) return {};
    return Describe(result, mSession.GetSampleRate());
}

void Player::Impl::Stop() {
    mGoesOn = false;
    if (!IsPlaying()) return;
    Finish();
    stateChanged();
}

void Player::Impl::StopFor(const ustring& reason) {
    Stop();
    trouble(reason);
}

void Player::Impl::Finish() {
    mTimer.stop();
    mPosition = GetPosition();
    mCounts = GetCounts();
    mPlayback->device.Stop();
    mPlayback.reset();
}

void Player::Impl::Seek(std::int64_t position) {
    mPosition = std::clamp<std::int64_t>(position, 0, mLength);
    if (mPlayback) mPlayback->feeder.Seek(mPosition);
}

std::vector<float> Player::Impl::TakePeaks() {
    if (mPlayback) return mPlayback->engine.TakePeaks();
    return std::vector<float>(mSession.GetLayout().size());
}

Player::Counts Player::Impl::GetCounts() const {
    if (!mPlayback) return mCounts;
    return {mPlayback->engine.GetBlockCount(), mPlayback->engine.GetLostCount()};
}

void Player::Impl::FollowChain() {
    if (mPlayback) TellRefused(mPlayback->chain.SetEffects(mSession.GetEffects()));
}

void Player::Impl::FollowLooping() {
    if (mPlayback) mPlayback->engine.SetLooping(mSession.IsLooping());
}

void Player::Impl::TellRefused(const LiveChain::Effects& effects) {
    for (const ChainEffectPtr& effect : effects) {
        trouble(FillPlaceholders(
            Localize("$$$/tessaly/Player/EffectRefuses=@0 refuses sound of @1 samples a second and is passed by."),
            {effect->GetName(), ToText(std::to_string(mSession.GetSampleRate()))}));
    }
}

/// What the threads of the sound do not tell by themselves.
void Player::Impl::Look() {
    Playback& playback = *mPlayback;
    playback.chain.Collect();
    if (playback.device.HasFailed()) {
        StopFor(Localize("$$$/tessaly/Player/DeviceGone=The sound device is gone, or takes no more sound."));
        return;
    }
    const FileFeeder::Kind state = playback.feeder.GetState();
    if (state != FileFeeder::kEnd && state != FileFeeder::kFailed) return;
    if (playback.engine.GetFramesAfterEnd() < playback.device.GetBufferedFrames()) return;
    if (state == FileFeeder::kEnd) {
        Stop();
        return;
    }
    StopFor(FillPlaceholders(Localize("$$$/tessaly/Player/BrokenOff=The sound cannot be read any further: @0"),
                             {ToText(playback.feeder.GetTrouble())}));
}

void Player::Impl::OnBeforeFormatChanges() {
    const bool wasPlaying = IsPlaying();
    Stop();
    mGoesOn = wasPlaying;
}

void Player::Impl::OnFormatChanged() {
    const bool isSameSound = mSession.GetSoundPath() == mPath;
    mPath = mSession.GetSoundPath();
    mLength = ReadLength(mPath);
    mPosition = isSameSound ? std::min(mPosition, mLength) : 0;
    if (std::exchange(mGoesOn, false) && isSameSound) Play();
}

Player::Player(Session& session) : mImpl(std::make_unique<Impl>(session)) {}

Player::~Player() { mImpl->Stop(); }

void Player::Play() { mImpl->Play(); }

void Player::Stop() { mImpl->Stop(); }

bool Player::IsPlaying() const { return mImpl->IsPlaying(); }

void Player::Seek(std::int64_t position) { mImpl->Seek(position); }

std::int64_t Player::GetPosition() const { return mImpl->GetPosition(); }

std::int64_t Player::GetLength() const { return mImpl->GetLength(); }

int Player::GetSampleRate() const { return mImpl->GetSampleRate(); }

std::vector<float> Player::TakePeaks() { return mImpl->TakePeaks(); }

Player::Counts Player::GetCounts() const { return mImpl->GetCounts(); }

Player::Signal& Player::GetStateChangedSignal() { return mImpl->stateChanged; }

Player::TroubleSignal& Player::GetTroubleSignal() { return mImpl->trouble; }

}  // namespace tessaly
