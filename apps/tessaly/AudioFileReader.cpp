#include "AudioFileReader.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <sndfile.h>

#include "AudioFileError.h"
#include "ChunkFile.h"
#include "FilePath.h"

namespace tessaly {

namespace {

// Centuries of sound; what is more stands for a length that is not known.
constexpr std::int64_t kMaxFrames = std::int64_t(1) << 47;

void CheckIsFile(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(ToFilePath(path), error);
    if (status.type() == std::filesystem::file_type::not_found) throw AudioFileError(path, "is not there");
    // A pipe may never give anything, and never says how much.
    if (!std::filesystem::is_regular_file(status)) throw AudioFileError(path, "is no file that can be read");
}

SoundFileHandle Open(const std::string& path, SF_INFO& info) {
    CheckIsFile(path);
    SoundFileHandle file = OpenSoundFile(ToFilePath(path), SFM_READ, info);
    if (!file) throw AudioFileError(path, std::string("cannot be read as sound: ") + sf_strerror(nullptr));
    return file;
}

/// libsndfile ends up in the wrong place of such a file when it has been read before.
bool SeeksOnlyWhenFresh(int format) { return (format & SF_FORMAT_TYPEMASK) == SF_FORMAT_OGG; }

}  // namespace

AudioFileReader::AudioFileReader(const std::string& path) : mPath(path), mPosition(0) {
    SF_INFO info = {};
    mFile = Open(path, info);
    mFormat = info.format;
    mChannelCount = info.channels;
    mSampleRate = info.samplerate;
    mFrameCount = info.frames;
    CheckLimits();
}

void AudioFileReader::CheckLimits() const {
    if (mChannelCount < 1 || mChannelCount > kMaxChannels) {
        throw AudioFileError(mPath, "has " + std::to_string(mChannelCount) + " channels; there may be 1 to " +
                                        std::to_string(kMaxChannels));
    }
    if (mSampleRate < kMinSampleRate || mSampleRate > kMaxSampleRate) {
        throw AudioFileError(mPath, "has a sample rate of " + std::to_string(mSampleRate) + " Hz; it may be " +
                                        std::to_string(kMinSampleRate) + " to " + std::to_string(kMaxSampleRate));
    }
    if (mFrameCount > kMaxFrames) throw AudioFileError(mPath, "does not say how long it is");
    // libsndfile takes what is there of such a file, and says nothing.
    if (ChunkFile::IsCutOff(mPath)) throw AudioFileError(mPath, "is cut off: its end is missing");
    if (mFrameCount < 1) throw AudioFileError(mPath, "holds no sound");
}

int AudioFileReader::Read(float* const* channels, int frames) {
    const auto channelCount = static_cast<std::size_t>(mChannelCount);
    const auto wanted = static_cast<std::size_t>(std::min<std::int64_t>(frames, mFrameCount - mPosition));
    if (wanted == 0) return 0;
    mSamples.resize(std::max(mSamples.size(), wanted * channelCount));
    const sf_count_t count = sf_readf_float(mFile.get(), mSamples.data(), static_cast<sf_count_t>(wanted));
    if (sf_error(mFile.get()) != SF_ERR_NO_ERROR)
        throw AudioFileError(mPath, std::string("is damaged: ") + sf_strerror(mFile.get()));
    if (count != static_cast<sf_count_t>(wanted)) throw AudioFileError(mPath, "is cut off: its end is missing");
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        for (std::size_t i = 0; i < wanted; ++i) channels[channel][i] = mSamples[i * channelCount + channel];
    }
    mPosition += count;
    return static_cast<int>(count);
}

void AudioFileReader::Seek(std::int64_t frame) {
    const std::int64_t target = std::clamp<std::int64_t>(frame, 0, mFrameCount);
    if (target == mPosition) return;
    if (SeeksOnlyWhenFresh(mFormat)) Reopen();
    if (sf_seek(mFile.get(), static_cast<sf_count_t>(target), SEEK_SET) == static_cast<sf_count_t>(target)) {
        mPosition = target;
        return;
    }
    const std::string reason = sf_strerror(mFile.get());
    sf_seek(mFile.get(), static_cast<sf_count_t>(mPosition), SEEK_SET);
    throw AudioFileError(mPath, "cannot be read from its middle: " + reason);
}

void AudioFileReader::Reopen() {
    SF_INFO info = {};
    SoundFileHandle file = Open(mPath, info);
    if (info.format != mFormat || info.channels != mChannelCount || info.frames != mFrameCount)
        throw AudioFileError(mPath, "has become another sound while it was read");
    mFile = std::move(file);
}

}  // namespace tessaly
