#pragma once

#include <sndfile.h>

#include "RenderFixture.h"

namespace zeltests {

/// What goes wrong, and that nothing is written then; Fail checks that each time.
class RenderErrorFixture : public RenderFixture {
protected:
    static constexpr int kFailed = 1;
    static constexpr int kUsage = 2;
    static inline const std::string kPlain = TestPlugin("vst/good/zel_plain" ZEL_MODULE);

    RenderErrorFixture() { WriteSound(mInput, MakeTestSound(2, 1000)); }

    std::string FailWithInput(const std::string& input) { return Fail(kFailed, input, mOutput, {"--effect", kPlain}); }
    std::string FailWithOutput(int exitCode, const std::string& output) {
        return Fail(exitCode, mInput, output, {"--effect", kPlain});
    }
    /// Sound as different from one sample to the next as it can be: no format makes it much smaller.
    static Sound MakeNoise(std::size_t frames) {
        return MakeSound(2, frames, [](std::size_t channel, std::size_t i) {
            return static_cast<float>((i * i * 7919 + channel) % 1009) / 2018.0f;
        });
    }
    /// Writes a sound file and cuts it in half.
    void CutOff(const std::string& name, int format) {
        WriteSound(Path(name), MakeNoise(50000), format);
        const std::string bytes = ReadFile(Path(name));
        WriteFile(Path(name), bytes.substr(0, bytes.size() / 2));
    }
    /// Changes a number in the header of the input.
    void PutIntoHeader(std::size_t at, const std::string& bytes) {
        WriteSound(mInput, MakeTestSound(2, 1000), SF_FORMAT_WAV | SF_FORMAT_PCM_16);
        WriteFile(mInput, ReadFile(mInput).replace(at, bytes.size(), bytes));
    }
};

}  // namespace zeltests
