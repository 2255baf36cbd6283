#include "RenderJob.h"

#include <stdexcept>

#include "AudioFileError.h"
#include "AudioFileFormat.h"
#include "AudioFileReader.h"
#include "AudioFileWriter.h"
#include "FilePath.h"
#include "LocalText.h"
#include "Renderer.h"
#include "Session.h"

namespace tessaly {

namespace {

constexpr int kBlock = 512;

std::runtime_error MakeError(const QString& text) { return std::runtime_error(text.toStdString()); }

bool FitsTrack(const AudioFileReader& file, int sampleRate, const zelmediatypes::AudioChannelLayout& layout) {
    return file.GetSampleRate() == sampleRate && static_cast<std::size_t>(file.GetChannelCount()) == layout.size();
}

}  // namespace

RenderJob::RenderJob(Session& session, const std::string& output, std::int64_t tail)
    : mProgress(0.0), mIsCancelled(false), mState(kRunning) {
    const AudioFileFormat* const format = AudioFileFormat::FindForPath(output);
    if (format == nullptr) {
        throw MakeError(LocalText("$$$/tessaly/Render/Format=The file's name has to end with one of these: @0",
                                  QString::fromStdString(AudioFileFormat::ListExtensions())));
    }
    OpenInputs(session, output);
    FillChain(session);
    mChain.Start(mInput->GetSampleRate(), kBlock);
    mRenderer = std::make_unique<Renderer>(*mInput, mSideChain.get(), mChain, kBlock, tail);
    mOutput = std::make_unique<AudioFileWriter>(output, *format, mInput->GetChannelCount(), mInput->GetSampleRate(),
                                                mRenderer->GetFrameCount());
    mThread = std::thread([this] { Run(); });
}

RenderJob::~RenderJob() {
    Cancel();
    if (mThread.joinable()) mThread.join();
}

void RenderJob::OpenInputs(Session& session, const std::string& output) {
    if (session.GetSoundPath().empty())
        throw MakeError(LocalText("$$$/tessaly/Render/NoSound=There is no sound to render."));
    for (const std::string& source : {session.GetSoundPath(), session.GetSideChainPath()}) {
        std::error_code ignored;
        if (!source.empty() && std::filesystem::equivalent(ToFilePath(source), ToFilePath(output), ignored))
            throw MakeError(LocalText("$$$/tessaly/Render/Same=This file is what is played. Choose another one."));
    }
    mInput = std::make_unique<AudioFileReader>(session.GetSoundPath());
    if (!session.GetSideChainBus().GetLayout().empty())
        mSideChain = std::make_unique<AudioFileReader>(session.GetSideChainPath());
    CheckInputs(session);
}

void RenderJob::CheckInputs(const Session& session) const {
    // Buffers are as wide as the files, the effects hear what the session has looked at: somebody may have written
    // another file there since.
    const bool fits =
        FitsTrack(*mInput, session.GetSampleRate(), session.GetLayout()) &&
        (!mSideChain || FitsTrack(*mSideChain, session.GetSampleRate(), session.GetSideChainBus().GetLayout()));
    if (!fits) {
        throw MakeError(LocalText(
            "$$$/tessaly/Player/FileChanged=The sound's file is not the one that was opened: open it again."));
    }
}

void RenderJob::FillChain(Session& session) {
    if (!mChain.SetTargetFormat(session.GetLayout(), session.GetSideChainBus())) {
        throw MakeError(LocalText(
            "$$$/tessaly/Render/TooWide=The sound and its side-chain have more channels than effects can take."));
    }
    for (const ChainEffectPtr& effect : session.GetEffects()) {
        if (!effect->IsMissing() && !effect->IsBypassed()) mChain.Append(effect->GetFilter());
    }
}

void RenderJob::Run() {
    State state = kFailed;
    try {
        const bool complete = mRenderer->Run(*mOutput, [this](std::int64_t done, std::int64_t total) {
            mProgress = total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 1.0;
            return !mIsCancelled;
        });
        if (complete) mOutput->Commit();
        state = complete ? kDone : kCancelled;
    } catch (const std::exception& error) {
        mError = error.what();
    }
    // What was written in vain goes before anybody is told.
    mOutput.reset();
    mState = state;
}

}  // namespace tessaly
