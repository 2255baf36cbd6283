#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

#include <QIODevice>

#include "ChannelBuffers.h"
#include "SampleWriter.h"

namespace tessaly {

class SoundEngine;

/// What an engine renders as an endless stream of bytes in a device's form. Made on the main thread, read on the sound
/// thread.
class EngineStream : public QIODevice {
public:
    /// The engine outlives the stream.
    EngineStream(SoundEngine& engine, const SampleWriter& writer);

    /// How often it was read. Any thread.
    std::uint64_t GetReadCount() const { return mReadCount; }

    bool isSequential() const override { return true; }
    bool atEnd() const override { return false; }
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char* data, qint64 size) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    SoundEngine& mEngine;
    const SampleWriter mWriter;
    ChannelBuffers mSound;
    std::atomic<std::uint64_t> mReadCount;
};

}  // namespace tessaly
