#include "AudioFileWriter.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include <sndfile.h>

#include "AudioFileError.h"
#include "AudioFileFormat.h"

namespace tessaly {

namespace {

constexpr int kMostNames = 1000;

AudioFileError CannotWrite(const std::string& path, const std::string& why) {
    return AudioFileError(path, "cannot be written: " + why);
}

/// Opens and closes a file; 0, or the system's reason why not.
int TryToOpen(const std::filesystem::path& path, const char* mode) {
    std::FILE* const file = std::fopen(path.string().c_str(), mode);
    if (file == nullptr) return errno;
    std::fclose(file);
    return 0;
}

}  // namespace

AudioFileWriter::AudioFileWriter(const std::string& path, const AudioFileFormat& format, int channelCount,
                                 int sampleRate, std::int64_t frames)
    : mPath(path), mChannelCount(channelCount) {
    std::error_code error;
    mPlace = std::filesystem::weakly_canonical(path, error);
    if (error) throw CannotWrite(path, error.message());
    CheckPlace();
    CreateBeside();
    try {
        Open(format, sampleRate, frames);
    } catch (...) {
        Discard();
        throw;
    }
}

AudioFileWriter::~AudioFileWriter() { Discard(); }

void AudioFileWriter::CheckPlace() const {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(mPlace, error);
    if (status.type() == std::filesystem::file_type::not_found) return;
    if (!std::filesystem::is_regular_file(status)) throw CannotWrite(mPath, "there is something that is no file");
    // Renaming asks for the folder's permission alone, and would replace a file that is protected.
    const int reason = TryToOpen(mPlace, "ab");
    if (reason != 0) throw CannotWrite(mPath, std::generic_category().message(reason));
}

void AudioFileWriter::CreateBeside() {
    int reason = EEXIST;
    for (int number = 1; number <= kMostNames && reason == EEXIST; ++number) {
        mBeside = mPlace;
        mBeside += ".partial" + std::to_string(number);
        reason = TryToOpen(mBeside, "wbx");
    }
    if (reason == 0) return;
    mBeside.clear();
    throw CannotWrite(mPath, std::generic_category().message(reason));
}

void AudioFileWriter::Open(const AudioFileFormat& format, int sampleRate, std::int64_t frames) {
    SF_INFO info = {};
    info.channels = mChannelCount;
    info.samplerate = sampleRate;
    const auto samples = static_cast<std::uint64_t>(frames) * static_cast<std::uint64_t>(mChannelCount);
    info.format = format.GetCode(samples * sizeof(float));
    if (sf_format_check(&info)) mFile.reset(sf_open(mBeside.string().c_str(), SFM_WRITE, &info));
    if (!mFile) {
        throw AudioFileError(mPath, "cannot be written: a file of this kind has no " + std::to_string(mChannelCount) +
                                        " channels at " + std::to_string(sampleRate) + " Hz; one of .wav has");
    }
    // Integers wrap round otherwise, from loudest to loudest with the other sign.
    sf_command(mFile.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
}

void AudioFileWriter::Write(const float* const* channels, int frames) {
    const auto channelCount = static_cast<std::size_t>(mChannelCount);
    const auto count = static_cast<std::size_t>(frames);
    mSamples.resize(count * channelCount);
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        for (std::size_t i = 0; i < count; ++i) mSamples[i * channelCount + channel] = channels[channel][i];
    }
    if (sf_writef_float(mFile.get(), mSamples.data(), frames) != frames)
        throw CannotWrite(mPath, sf_strerror(mFile.get()));
}

void AudioFileWriter::Commit() {
    sf_write_sync(mFile.get());
    // Closing writes the last of the sound and the header's lengths.
    const int failed = sf_close(mFile.release());
    if (failed != 0) throw CannotWrite(mPath, sf_error_number(failed));
    std::error_code error;
    std::filesystem::rename(mBeside, mPlace, error);
    if (error) throw CannotWrite(mPath, error.message());
    mBeside.clear();
}

void AudioFileWriter::Discard() {
    mFile.reset();
    std::error_code ignored;
    if (!mBeside.empty()) std::filesystem::remove(mBeside, ignored);
    mBeside.clear();
}

}  // namespace tessaly
