#include "Renderer.h"

#include <algorithm>

#include "AudioFileReader.h"
#include "AudioFileWriter.h"
#include "EffectChain.h"

namespace tessaly {

namespace {

std::size_t CountChannels(const AudioFileReader* file) {
    return file ? static_cast<std::size_t>(file->GetChannelCount()) : 0;
}

}  // namespace

Renderer::Renderer(AudioFileReader& input, AudioFileReader* sideChain, EffectChain& chain, int block, std::int64_t tail)
    : mInput(input),
      mSideChain(sideChain),
      mChain(chain),
      mBlock(block),
      mFrameCount(input.GetFrameCount() + tail),
      mBuffers(CountChannels(&input) + CountChannels(sideChain), block),
      mMeter(CountChannels(&input)) {}

bool Renderer::Run(AudioFileWriter& output, const Progress& progress) {
    float* const* const channels = mBuffers.GetChannels();
    for (std::int64_t done = 0; done < mFrameCount;) {
        if (!progress(done, mFrameCount)) return false;
        ReadBlock();
        const auto frames = static_cast<int>(std::min<std::int64_t>(mBlock, mFrameCount - done));
        mChain.Process(channels, channels, frames);
        mMeter.Process(channels, frames);
        output.Write(channels, frames);
        done += frames;
    }
    return progress(mFrameCount, mFrameCount);
}

void Renderer::ReadBlock() {
    const std::size_t main = CountChannels(&mInput);
    mBuffers.Silence(0, main, mInput.Read(mBuffers.GetChannels(), mBlock));
    if (!mSideChain) return;
    mBuffers.Silence(main, CountChannels(mSideChain), mSideChain->Read(mBuffers.GetChannels() + main, mBlock));
}

}  // namespace tessaly
