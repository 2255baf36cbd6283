#pragma once

#include <cstdint>

#include <boost/function.hpp>

#include "ChannelBuffers.h"
#include "OutputMeter.h"

namespace tessaly {

class AudioFileReader;
class AudioFileWriter;
class EffectChain;

/// Carries a file through a chain of effects into another file, block by block. One thread at a time.
class Renderer {
public:
    /// Told how many frames are written of how many. False cancels.
    typedef boost::function<bool(std::int64_t, std::int64_t)> Progress;

    /// All of them outlive the object. `sideChain` may be null; a shorter one goes on as silence. The chain is in the
    /// track that the files make, and started for blocks of `block` frames. `tail` frames of silence follow the sound.
    Renderer(AudioFileReader& input, AudioFileReader* sideChain, EffectChain& chain, int block, std::int64_t tail);

    std::int64_t GetFrameCount() const { return mFrameCount; }
    const OutputMeter& GetMeter() const { return mMeter; }

    /// Writes all of it; false when `progress` cancelled. Throws AudioFileError.
    bool Run(AudioFileWriter& output, const Progress& progress);

private:
    void ReadBlock();

    AudioFileReader& mInput;
    AudioFileReader* const mSideChain;
    EffectChain& mChain;
    const int mBlock;
    const std::int64_t mFrameCount;
    ChannelBuffers mBuffers;  ///< the track's channels, then those of the side-chain
    OutputMeter mMeter;
};

}  // namespace tessaly
