#include "TrackReader.h"

#include <algorithm>

#include "AudioFileError.h"

namespace tessaly {

namespace {

constexpr std::int64_t kShortFrames = 1 << 15;

std::string DescribeRate(int rate) { return std::to_string(rate) + " Hz"; }

}  // namespace

TrackReader::TrackReader(const std::string& soundPath, const std::string& sideChainPath)
    : mSound(soundPath), mPosition(0) {
    if (!sideChainPath.empty()) mSideChain = std::make_unique<AudioFileReader>(sideChainPath);
    if (mSideChain && mSideChain->GetSampleRate() != GetSampleRate()) {
        throw AudioFileError(sideChainPath, "has a sample rate of " + DescribeRate(mSideChain->GetSampleRate()) +
                                                " and not that of the sound, " + DescribeRate(GetSampleRate()));
    }
    if (GetFrameCount() <= kShortFrames) KeepShortSound();
}

TrackReader::~TrackReader() = default;

std::size_t TrackReader::GetSideChainChannelCount() const {
    return mSideChain ? static_cast<std::size_t>(mSideChain->GetChannelCount()) : 0;
}

void TrackReader::KeepShortSound() {
    auto kept = std::make_unique<ChannelBuffers>(GetChannelCount(), static_cast<int>(GetFrameCount()));
    ReadFiles(kept->GetChannels(), static_cast<int>(GetFrameCount()));
    mKept = std::move(kept);
    mPosition = 0;
}

void TrackReader::Seek(std::int64_t frame) {
    const std::int64_t target = frame % GetFrameCount();
    if (!mKept) {
        mSound.Seek(target);
        if (mSideChain) mSideChain->Seek(target);
    }
    mPosition = target;
}

int TrackReader::Read(float* const* channels, int frames) {
    if (mPosition == GetFrameCount()) Seek(0);
    const auto wanted = static_cast<int>(std::min<std::int64_t>(frames, GetFrameCount() - mPosition));
    return mKept ? ReadKept(channels, wanted) : ReadFiles(channels, wanted);
}

int TrackReader::ReadFiles(float* const* channels, int frames) {
    const int count = mSound.Read(channels, frames);
    if (mSideChain) {
        float* const* const sideChain = channels + GetSoundChannelCount();
        const int there = mSideChain->Read(sideChain, count);
        for (std::size_t i = 0; i < GetSideChainChannelCount(); ++i)
            std::fill(sideChain[i] + there, sideChain[i] + count, 0.0f);
    }
    mPosition += count;
    return count;
}

int TrackReader::ReadKept(float* const* channels, int frames) {
    for (std::size_t i = 0; i < GetChannelCount(); ++i)
        std::copy_n(mKept->GetChannels()[i] + mPosition, frames, channels[i]);
    mPosition += frames;
    return frames;
}

}  // namespace tessaly
