#include "AudioFileWriter.h"

#include <algorithm>
#include <memory>
#include <system_error>

#include <sndfile.h>

#include "AudioFileError.h"
#include "AudioFileFormat.h"
#include "FilePath.h"
#include "SystemFile.h"

namespace tessaly {

namespace {

constexpr int kMostNames = 1000;
// As many as the system follows.
constexpr int kMostLinks = 40;
// More than the longest packet of any format that is written.
constexpr std::int64_t kLastFrames = 65536;

AudioFileError CannotWrite(const std::string& path, const std::string& why) {
    return AudioFileError(path, "cannot be written: " + why);
}

/// Where a path leads, whether something is there or not.
std::filesystem::path FollowLinks(std::filesystem::path place, std::error_code& error) {
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code none;
        if (!std::filesystem::is_symlink(place, none)) return std::filesystem::weakly_canonical(place, error);
        // A target that is absolute replaces what it is put behind.
        place = place.parent_path() / std::filesystem::read_symlink(place, error);
        if (error) return place;
    }
    error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    return place;
}

}  // namespace

AudioFileWriter::AudioFileWriter(const std::string& path, const AudioFileFormat& format, int channelCount,
                                 int sampleRate, std::int64_t frames)
    : mPath(path), mChannelCount(channelCount), mFrameCount(0) {
    std::error_code error;
    mPlace = FollowLinks(ToFilePath(path), error);
    if (error) throw CannotWrite(path, error.message());
    CheckPlace();
    CreateBeside();
    try {
        CopyPermissions();
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
    const std::error_code reason = SystemFile::CheckWritable(mPlace);
    if (reason) throw CannotWrite(mPath, reason.message());
}

void AudioFileWriter::CreateBeside() {
    std::error_code reason = std::make_error_code(std::errc::file_exists);
    for (int number = 1; number <= kMostNames && reason == std::errc::file_exists; ++number) {
        mBeside = mPlace;
        mBeside += ".partial" + std::to_string(number);
        reason = SystemFile::CreateNew(mBeside);
    }
    if (!reason) return;
    mBeside.clear();
    throw CannotWrite(mPath, reason.message());
}

void AudioFileWriter::CopyPermissions() const {
    std::error_code error;
    const std::filesystem::file_status old = std::filesystem::status(mPlace, error);
    if (old.type() == std::filesystem::file_type::not_found) return;
    const std::filesystem::perms wanted = old.permissions() & std::filesystem::perms::all;
    // Some file systems have the same for all files, and refuse every change.
    if (std::filesystem::status(mBeside, error).permissions() == wanted) return;
    std::filesystem::permissions(mBeside, wanted, error);
    if (error) throw CannotWrite(mPath, error.message());
}

void AudioFileWriter::Open(const AudioFileFormat& format, int sampleRate, std::int64_t frames) {
    SF_INFO info = {};
    info.channels = mChannelCount;
    info.samplerate = sampleRate;
    const auto samples = static_cast<std::uint64_t>(frames) * static_cast<std::uint64_t>(mChannelCount);
    info.format = format.GetCode(samples);
    if (info.format == AudioFileFormat::kNoCode)
        throw CannotWrite(mPath, "a file of this kind has less than 4 GiB; one of .wav may have more");
    if (!sf_format_check(&info)) {
        throw CannotWrite(mPath, "a file of this kind has no " + std::to_string(mChannelCount) + " channels at " +
                                     std::to_string(sampleRate) + " Hz; one of .wav has");
    }
    mFile = OpenSoundFile(mBeside, SFM_WRITE, info);
    if (!mFile) throw CannotWrite(mPath, sf_strerror(nullptr));
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
    // An encoder may take all frames and lose what it makes of them.
    if (sf_writef_float(mFile.get(), mSamples.data(), frames) != frames || sf_error(mFile.get()) != SF_ERR_NO_ERROR)
        throw CannotWrite(mPath, sf_strerror(mFile.get()));
    mFrameCount += frames;
}

void AudioFileWriter::Commit() {
    sf_write_sync(mFile.get());
    // Closing writes the last of the sound and the header's lengths.
    const int failed = sf_close(mFile.release());
    if (failed != 0) throw CannotWrite(mPath, sf_error_number(failed));
    CheckWritten();
    std::error_code error;
    std::filesystem::rename(mBeside, mPlace, error);
    if (error) throw CannotWrite(mPath, error.message());
    mBeside.clear();
}

void AudioFileWriter::CheckWritten() const {
    // Encoders do not tell when the last packet or the header could not be written.
    SF_INFO info = {};
    const SoundFileHandle file = OpenSoundFile(mBeside, SFM_READ, info);
    const sf_count_t last = std::min(mFrameCount, kLastFrames);
    bool whole = file && info.channels == mChannelCount && info.frames == mFrameCount;
    if (whole && last > 0) {
        std::vector<float> samples(static_cast<std::size_t>(last) * static_cast<std::size_t>(mChannelCount));
        whole = sf_seek(file.get(), mFrameCount - last, SEEK_SET) >= 0 &&
                sf_readf_float(file.get(), samples.data(), last) == last && sf_error(file.get()) == SF_ERR_NO_ERROR;
    }
    if (!whole) throw CannotWrite(mPath, "what was written cannot be read again; the disk may be full");
}

void AudioFileWriter::Discard() {
    mFile.reset();
    std::error_code ignored;
    if (!mBeside.empty()) std::filesystem::remove(mBeside, ignored);
    mBeside.clear();
}

}  // namespace tessaly
