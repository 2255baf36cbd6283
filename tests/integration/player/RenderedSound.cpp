#include "RenderedSound.h"

#include <memory>

#include <zelmediatypes/AudioChannelLayout.h>

#include "AudioFileFormat.h"
#include "AudioFileReader.h"
#include "AudioFileWriter.h"
#include "EffectChain.h"
#include "PlayerStage.h"
#include "Renderer.h"
#include "SideChainBus.h"
#include "support/ThrowAwayFolder.h"

using namespace tessaly;

namespace zeltests {

namespace {

zelmediatypes::AudioChannelLayout MakeLayout(const AudioFileReader* file) {
    return zelmediatypes::MakeChannelLayoutForCount(file ? static_cast<std::size_t>(file->GetChannelCount()) : 0);
}

}  // namespace

Sound RenderFile(const std::string& sound, const std::string& sideChain, const std::vector<std::string>& modules,
                 std::size_t tail) {
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("rendered.wav");
    AudioFileReader input(sound);
    std::unique_ptr<AudioFileReader> side;
    if (!sideChain.empty()) side = std::make_unique<AudioFileReader>(sideChain);
    EffectChain chain;
    chain.SetTargetFormat(MakeLayout(&input), SideChainBus::Make(MakeLayout(side.get())));
    for (const std::string& module : modules) chain.Append(LoadFilter(module));
    chain.Start(input.GetSampleRate(), SoundEngine::kBlockFrames);
    Renderer renderer(input, side.get(), chain, SoundEngine::kBlockFrames, static_cast<std::int64_t>(tail));
    AudioFileWriter output(path, *AudioFileFormat::FindForPath(path), input.GetChannelCount(), input.GetSampleRate(),
                           renderer.GetFrameCount());
    renderer.Run(output, [](std::int64_t, std::int64_t) { return true; });
    output.Commit();
    return ReadSound(path);
}

}  // namespace zeltests
