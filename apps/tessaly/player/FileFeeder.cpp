#include "FileFeeder.h"

#include <algorithm>
#include <chrono>
#include <exception>

namespace tessaly {

namespace {

constexpr int kChunkFrames = 4096;
// How often it looks whether there is room again: nobody wakes it, as that is nothing for the sound thread to do.
constexpr std::chrono::milliseconds kLook(20);

}  // namespace

struct FileFeeder::Stretch {
    Stretch(std::size_t channels, std::size_t frames, std::int64_t first, unsigned itsNumber)
        : ring(channels, frames), position(first), number(itsNumber) {}

    SoundRing ring;
    std::int64_t position;  ///< of the next frame that is played; the sound thread's, once it has it
    const unsigned number;
};

FileFeeder::FileFeeder(const std::string& soundPath, const std::string& sideChainPath, std::int64_t position)
    : mTrack(std::make_unique<TrackReader>(soundPath, sideChainPath)),
      mFrameCount(mTrack->GetFrameCount()),
      mChannelCount(mTrack->GetChannelCount()),
      mChunk(mChannelCount, kChunkFrames),
      mChunkRest(mChannelCount),
      mWantedPosition(std::clamp<std::int64_t>(position, 0, mFrameCount)),
      mWantedNumber(1),
      mStops(false),
      mReadyNumber(0),
      mPlayedNumber(0),
      mPlayedPosition(0),
      mPlayedKind(kNotYet),
      mThread([this] { Run(); }) {}

FileFeeder::~FileFeeder() {
    {
        const std::lock_guard lock(mMutex);
        mStops = true;
    }
    mWakeUp.notify_one();
    mThread.join();
}

void FileFeeder::Seek(std::int64_t position) {
    {
        const std::lock_guard lock(mMutex);
        mWantedPosition = std::clamp<std::int64_t>(position, 0, mFrameCount);
        ++mWantedNumber;
    }
    mWakeUp.notify_one();
}

std::int64_t FileFeeder::GetPosition() const {
    const std::lock_guard lock(mMutex);
    if (mPlayedNumber.load(std::memory_order_acquire) != mWantedNumber) return mWantedPosition;
    return mPlayedPosition.load(std::memory_order_relaxed);
}

FileFeeder::Kind FileFeeder::GetState() const {
    const std::lock_guard lock(mMutex);
    if (mPlayedNumber.load(std::memory_order_acquire) != mWantedNumber) return kNotYet;
    return mPlayedKind.load(std::memory_order_relaxed);
}

bool FileFeeder::IsReady() const {
    const std::lock_guard lock(mMutex);
    return mReadyNumber == mWantedNumber;
}

std::string FileFeeder::GetTrouble() const {
    const std::lock_guard lock(mMutex);
    return mTrouble;
}

// The reading thread

void FileFeeder::Run() {
    // So that a seek is heard soon, and a stretch still has something in hand when it is.
    const auto inHand = static_cast<std::size_t>(mTrack->GetSampleRate() / 4);
    StretchPtr stretch;
    while (StretchPtr next = WaitForWork(stretch)) {
        if (next == stretch) {
            FillOnce(*stretch);
            continue;
        }
        stretch = next;
        Fill(*stretch, inHand);
        mStretch.Publish(stretch);
        mReadyNumber = stretch->number;
    }
}

/// The stretch to go on with, perhaps a new one; null to stop.
FileFeeder::StretchPtr FileFeeder::WaitForWork(StretchPtr stretch) {
    std::unique_lock lock(mMutex);
    const auto hasNews = [&] { return mStops || !stretch || stretch->number != mWantedNumber; };
    while (!hasNews()) {
        if (!stretch->ring.HasEnded() && stretch->ring.GetRoom() >= static_cast<std::size_t>(kChunkFrames))
            return stretch;
        mWakeUp.wait_for(lock, kLook, hasNews);
    }
    if (mStops) return nullptr;
    mTrouble.clear();
    const std::int64_t position = mWantedPosition;
    const unsigned number = mWantedNumber;
    lock.unlock();
    try {
        return MakeStretch(position, number);
    } catch (const std::exception& error) {
        // One without room: the sound fails there, and the program goes on.
        stretch = std::make_shared<Stretch>(mChannelCount, 1, position, number);
        Fail(*stretch, error.what());
        return stretch;
    }
}

FileFeeder::StretchPtr FileFeeder::MakeStretch(std::int64_t position, unsigned number) const {
    const auto wanted = static_cast<std::size_t>(mTrack->GetSampleRate()) * kSecondsAhead;
    const std::size_t most = kMaxRingSize / (sizeof(float) * mChannelCount);
    // Room for a few chunks, however slow the sound is.
    const std::size_t frames = std::max(std::min(wanted, most), std::size_t(4) * kChunkFrames);
    return std::make_shared<Stretch>(mChannelCount, frames, position, number);
}

void FileFeeder::Fill(Stretch& stretch, std::size_t frames) {
    try {
        mTrack->Seek(stretch.position);
    } catch (const std::exception& error) {
        Fail(stretch, error.what());
        return;
    }
    const std::size_t wanted = std::min(frames, stretch.ring.GetCapacity() / 2);
    for (std::size_t done = 0; done < wanted; done += kChunkFrames) {
        if (!FillOnce(stretch)) return;
    }
}

/// False when there is nothing more to come.
bool FileFeeder::FillOnce(Stretch& stretch) {
    int filled = 0;
    std::string trouble;
    try {
        while (filled < kChunkFrames) filled += mTrack->Read(GetChunkFrom(filled), kChunkFrames - filled);
    } catch (const std::exception& error) {
        trouble = error.what();
    }
    stretch.ring.Write(mChunk.GetChannels(), static_cast<std::size_t>(filled));
    if (trouble.empty()) return true;
    Fail(stretch, trouble);
    return false;
}

float* const* FileFeeder::GetChunkFrom(int frame) {
    for (std::size_t i = 0; i < mChannelCount; ++i) mChunkRest[i] = mChunk.GetChannels()[i] + frame;
    return mChunkRest.data();
}

void FileFeeder::Fail(Stretch& stretch, const std::string& trouble) {
    const std::lock_guard lock(mMutex);
    mTrouble = trouble;
    stretch.ring.End();
}

// The sound thread

FileFeeder::Reading FileFeeder::Read(float* const* channels, int frames, bool loops) {
    Stretch* const stretch = mStretch.Take().get();
    if (!stretch) return {};
    const Reading reading = ReadFrom(*stretch, channels, frames, loops);
    mPlayedPosition.store(stretch->position, std::memory_order_relaxed);
    mPlayedKind.store(reading.kind, std::memory_order_relaxed);
    // Last: whoever sees the number sees what belongs to it.
    mPlayedNumber.store(stretch->number, std::memory_order_release);
    return reading;
}

FileFeeder::Reading FileFeeder::ReadFrom(Stretch& stretch, float* const* channels, int frames, bool loops) const {
    if (loops) stretch.position %= mFrameCount;
    const bool hasEnded = stretch.ring.HasEnded();
    const auto available = static_cast<std::int64_t>(stretch.ring.GetAvailable());
    const std::int64_t left = loops ? frames : mFrameCount - stretch.position;
    Reading reading{left < frames ? kEnd : kSound, frames};
    reading.frames = static_cast<int>(std::min<std::int64_t>(frames, left));
    if (reading.frames > available && hasEnded) reading = {kFailed, static_cast<int>(available)};
    // Late is a whole block: half of one would click twice.
    if (reading.frames > available) reading = {kLate, 0};
    stretch.ring.Read(channels, static_cast<std::size_t>(reading.frames));
    stretch.position += reading.frames;
    if (loops) stretch.position %= mFrameCount;
    return reading;
}

}  // namespace tessaly
