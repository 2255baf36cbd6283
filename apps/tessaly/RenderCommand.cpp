#include "RenderCommand.h"

#include <cmath>
#include <cstdio>
#include <iostream>
#include <sstream>

#include <zelcore/SimpleMainLoop.h>

#include "AudioFileError.h"
#include "AudioFileFormat.h"
#include "AudioFileReader.h"
#include "AudioFileWriter.h"
#include "ChannelMapText.h"
#include "CommandLine.h"
#include "EffectChain.h"
#include "EffectSetup.h"
#include "FilePath.h"
#include "InterruptWatch.h"
#include "OutputGuard.h"
#include "PluginFinder.h"
#include "Renderer.h"
#include "SideChainBus.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelmediatypes::AudioChannelLayout;

namespace {

AudioChannelLayout MakeUsualLayout(const AudioFileReader* file) {
    return zelmediatypes::MakeChannelLayoutForCount(file ? static_cast<std::size_t>(file->GetChannelCount()) : 0);
}

std::string ToPrintable(const zelcore::ustring& text) {
    return TerminalText::MakePrintable(TerminalText::FromText(text));
}

std::string FormatLength(std::int64_t frames, int sampleRate) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3f s", static_cast<double>(frames) / sampleRate);
    return text;
}

/// "Left", or for a channel without a name its number.
std::string GetChannelName(const AudioChannelLayout& layout, std::size_t channel) {
    const std::string name = ToPrintable(AudioChannelLabelDescription(layout[channel].label, false));
    return name.empty() ? "Channel " + std::to_string(channel + 1) : name;
}

}  // namespace

RenderCommand::RenderCommand(const RenderOptions& options, zelcore::threads::SimpleMainLoop& loop)
    : mOptions(options),
      mLoop(loop),
      mIsTerminal(TerminalText::IsErrorStreamTerminal()),
      mIsCancelled(false),
      mLastPercent(-1) {}

int RenderCommand::Run() {
    std::string summary;
    {
        // Until the last plug-in is closed.
        const OutputGuard guard;
        summary = Render();
    }
    std::cout << summary;
    return summary.empty() ? kExitIncomplete : kExitDone;
}

std::string RenderCommand::Render() {
    AudioFileReader input(mOptions.input);
    const std::unique_ptr<AudioFileReader> sideChain = OpenSideChain(input);
    EffectChain chain;
    chain.SetTargetFormat(GetTrackLayout(input), SideChainBus::Make(MakeUsualLayout(sideChain.get())));
    CheckOutput();
    FillChain(chain);
    chain.Start(input.GetSampleRate(), mOptions.block);
    const std::int64_t tail = std::llround(mOptions.tail * input.GetSampleRate());
    Renderer renderer(input, sideChain.get(), chain, mOptions.block, tail);
    if (Write(renderer, input)) return Summarise(chain, renderer, input.GetSampleRate());
    std::cerr << "tessaly: the render was cancelled, and nothing is written\n";
    return std::string();
}

std::unique_ptr<AudioFileReader> RenderCommand::OpenSideChain(const AudioFileReader& input) const {
    if (mOptions.sideChain.empty()) return nullptr;
    auto sideChain = std::make_unique<AudioFileReader>(mOptions.sideChain);
    if (sideChain->GetSampleRate() == input.GetSampleRate()) return sideChain;
    throw AudioFileError(mOptions.sideChain, "has a sample rate of " + std::to_string(sideChain->GetSampleRate()) +
                                                 " Hz; as a side-chain it needs that of '" + mOptions.input + "', " +
                                                 std::to_string(input.GetSampleRate()) + " Hz");
}

AudioChannelLayout RenderCommand::GetTrackLayout(const AudioFileReader& input) const {
    if (mOptions.track.empty()) return MakeUsualLayout(&input);
    if (static_cast<int>(mOptions.track.size()) == input.GetChannelCount()) return mOptions.track;
    throw AudioFileError(mOptions.input, "has " + std::to_string(input.GetChannelCount()) +
                                             " channels, and the track " + std::to_string(mOptions.track.size()));
}

void RenderCommand::CheckOutput() const {
    for (const std::string& source : {mOptions.input, mOptions.sideChain}) {
        std::error_code ignored;
        if (!source.empty() && std::filesystem::equivalent(ToFilePath(source), ToFilePath(mOptions.output), ignored))
            throw AudioFileError(mOptions.output, "is one of the files to read; write into another one");
    }
}

void RenderCommand::FillChain(EffectChain& chain) const {
    for (const RenderOptions::Effect& effect : mOptions.effects) {
        const EffectChain::FilterPtr filter = PluginFinder::Load(effect.plugin, effect.component);
        chain.Append(filter);
        EffectSetup::Apply(*filter, effect);
    }
}

bool RenderCommand::Write(Renderer& renderer, const AudioFileReader& input) {
    const InterruptWatch interrupts([this] { mIsCancelled = true; });
    AudioFileWriter output(mOptions.output, *AudioFileFormat::FindForPath(mOptions.output), input.GetChannelCount(),
                           input.GetSampleRate(), renderer.GetFrameCount());
    const bool complete =
        renderer.Run(output, [this](std::int64_t done, std::int64_t total) { return OnProgress(done, total); });
    if (mLastPercent >= 0) std::cerr << '\n';
    if (complete) output.Commit();
    return complete;
}

bool RenderCommand::OnProgress(std::int64_t done, std::int64_t total) {
    // Plug-ins post calls to the main thread, and the interrupt comes in there, too.
    mLoop.RunPending();
    const auto percent = static_cast<int>(static_cast<double>(done) / static_cast<double>(total) * 100.0);
    if (mIsTerminal && percent != mLastPercent) {
        mLastPercent = percent;
        std::cerr << "\r\033[K" << percent << " %" << std::flush;
    }
    return !mIsCancelled;
}

std::string RenderCommand::Summarise(const EffectChain& chain, const Renderer& renderer, int sampleRate) const {
    std::ostringstream out;
    const OutputMeter& meter = renderer.GetMeter();
    out << TerminalText::MakePrintable(mOptions.output) << ": " << renderer.GetFrameCount() << " frames, "
        << FormatLength(renderer.GetFrameCount(), sampleRate) << " at " << sampleRate << " Hz\n";
    for (std::size_t i = 0; i < chain.GetCount(); ++i) {
        const AudioFilter& filter = *chain.GetFilter(i);
        out << "  " << ToPrintable(filter.GetName()) << ": in "
            << ChannelMapText::Print(filter.GetChannelMap(AudioFilter::kInput)) << ", out "
            << ChannelMapText::Print(filter.GetChannelMap(AudioFilter::kOutput)) << '\n';
    }
    const AudioChannelLayout& layout = chain.GetFilter(0)->GetChannelMapTargetChannelLayout();
    for (std::size_t i = 0; i < layout.size(); ++i)
        out << "  " << GetChannelName(layout, i) << ": " << meter.GetPeakText(i) << '\n';
    out << "  not finite: " << meter.GetNotFiniteCount() << '\n';
    if (meter.GetOverCount() > 0 && AudioFileFormat::FindForPath(mOptions.output)->Clips())
        out << "  clipped: " << meter.GetOverCount() << '\n';
    return out.str();
}

}  // namespace tessaly
