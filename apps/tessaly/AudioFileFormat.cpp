#include "AudioFileFormat.h"

#include <algorithm>
#include <iterator>

#include <sndfile.h>

#include "FilePath.h"
#include "TerminalText.h"

namespace tessaly {

namespace {

constexpr int kWav = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
constexpr int kLargeWav = SF_FORMAT_RF64 | SF_FORMAT_FLOAT;
constexpr int kAiff = SF_FORMAT_AIFF | SF_FORMAT_PCM_24;
constexpr int kFlac = SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
constexpr int kOgg = SF_FORMAT_OGG | SF_FORMAT_VORBIS;

constexpr int kNoCode = AudioFileFormat::kNoCode;

constexpr AudioFileFormat kFormats[] = {
    {".wav", kWav, kLargeWav, 4, false}, {".flac", kFlac, kFlac, 3, true}, {".aiff", kAiff, kNoCode, 3, true},
    {".aif", kAiff, kNoCode, 3, true},   {".ogg", kOgg, kOgg, 4, false},
};

// Below 4 GiB by what a header and a few more chunks take.
constexpr std::uint64_t kMostBytes = (std::uint64_t(1) << 32) - (1 << 16);

}  // namespace

const AudioFileFormat* AudioFileFormat::FindForPath(const std::string& path) {
    const std::string extension = TerminalText::FoldCase(FromFilePath(ToFilePath(path).extension()));
    const auto* const found =
        std::find_if(std::begin(kFormats), std::end(kFormats),
                     [&](const AudioFileFormat& format) { return extension == format.mExtension; });
    return found != std::end(kFormats) ? found : nullptr;
}

std::string AudioFileFormat::ListExtensions() {
    std::string list;
    for (const AudioFileFormat& format : kFormats) list += (list.empty() ? "" : ", ") + std::string(format.mExtension);
    return list;
}

int AudioFileFormat::GetCode(std::uint64_t samples) const {
    return samples > kMostBytes / mBytesPerSample ? mLargeCode : mCode;
}

}  // namespace tessaly
