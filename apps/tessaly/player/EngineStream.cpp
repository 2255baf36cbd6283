#include "EngineStream.h"

#include <algorithm>
#include <limits>

#include "SoundEngine.h"

namespace tessaly {

EngineStream::EngineStream(SoundEngine& engine, const SampleWriter& writer)
    : mEngine(engine), mWriter(writer), mSound(engine.GetChannelCount(), SoundEngine::kBlockFrames), mReadCount(0) {
    // A buffer between would only add to the way to the ear.
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 EngineStream::bytesAvailable() const { return std::numeric_limits<int>::max(); }

qint64 EngineStream::readData(char* data, qint64 size) {
    ++mReadCount;
    const auto frameSize = static_cast<qint64>(mWriter.GetFrameSize());
    const qint64 frames = size / frameSize;
    for (qint64 done = 0; done < frames;) {
        const auto count = static_cast<int>(std::min<qint64>(frames - done, SoundEngine::kBlockFrames));
        mEngine.Render(mSound.GetChannels(), count);
        mWriter.Write(mSound.GetChannels(), count, data + done * frameSize);
        done += count;
    }
    return frames * frameSize;
}

qint64 EngineStream::writeData(const char*, qint64) { return -1; }

}  // namespace tessaly
