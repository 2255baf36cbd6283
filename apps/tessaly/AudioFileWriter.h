#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "SoundFileHandle.h"

namespace tessaly {

class AudioFileFormat;

/// An audio file that is written from its beginning to its end. It grows beside its place under another name and takes
/// its place when it is complete: until then a file that was there before is as it was, and when the object goes
/// without that nothing is left. A link stays a link, and a file that is replaced keeps its permissions. One thread at
/// a time.
class AudioFileWriter {
public:
    /// `frames` is about how long it gets. Throws AudioFileError where no such file can be written.
    AudioFileWriter(const std::string& path, const AudioFileFormat& format, int channelCount, int sampleRate,
                    std::int64_t frames);
    /// Removes what was written, but for a file that is complete.
    ~AudioFileWriter();
    AudioFileWriter(const AudioFileWriter&) = delete;
    AudioFileWriter& operator=(const AudioFileWriter&) = delete;

    /// Appends frames; `channels` has one pointer per channel, each to `frames` samples, which are finite numbers.
    /// Throws AudioFileError.
    void Write(const float* const* channels, int frames);
    /// The file is complete: puts it in its place, if it can be read again. Throws AudioFileError; nothing has changed
    /// then.
    void Commit();

private:
    void CheckPlace() const;
    void CreateBeside();
    void CopyPermissions() const;
    void Open(const AudioFileFormat& format, int sampleRate, std::int64_t frames);
    void CheckWritten() const;
    void Discard();

    const std::string mPath;
    std::filesystem::path mPlace;   ///< where it goes, links resolved
    std::filesystem::path mBeside;  ///< where it grows; empty when there is nothing
    const int mChannelCount;
    SoundFileHandle mFile;
    std::int64_t mFrameCount;     ///< written so far
    std::vector<float> mSamples;  ///< as they are in the file, channel beside channel
};

}  // namespace tessaly
