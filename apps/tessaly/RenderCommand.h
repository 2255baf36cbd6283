#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "RenderOptions.h"

namespace zelcore {
namespace threads {
class SimpleMainLoop;
}
}  // namespace zelcore

namespace tessaly {

class AudioFileReader;
class EffectChain;
class Renderer;

/// `tessaly render`: plays a file through effects into another file. Main thread.
class RenderCommand {
public:
    /// `loop` is the installed one.
    RenderCommand(const RenderOptions& options, zelcore::threads::SimpleMainLoop& loop);

    /// Returns the program's exit code. Throws what is wrong with the files or the effects; nothing is written then.
    int Run();

private:
    /// Answers the summary; nothing when it was cancelled.
    std::string Render();
    std::unique_ptr<AudioFileReader> OpenSideChain(const AudioFileReader& input) const;
    zelmediatypes::AudioChannelLayout GetTrackLayout(const AudioFileReader& input) const;
    void CheckOutput() const;
    void FillChain(EffectChain& chain) const;
    bool Write(Renderer& renderer, const AudioFileReader& input);
    bool OnProgress(std::int64_t done, std::int64_t total);
    std::string Summarise(const EffectChain& chain, const Renderer& renderer, int sampleRate) const;

    const RenderOptions mOptions;
    zelcore::threads::SimpleMainLoop& mLoop;
    bool mIsTerminal;
    bool mIsCancelled;
    int mLastPercent;
};

}  // namespace tessaly
