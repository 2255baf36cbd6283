#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>

#include "EffectChain.h"

namespace tessaly {

class AudioFileReader;
class AudioFileWriter;
class Renderer;
class Session;

/// Renders a session's sound through its effects into a file, on a thread of its own, while the main thread shows how
/// far it is. The session is neither played nor changed meanwhile. Main thread.
class RenderJob {
public:
    enum State { kRunning, kDone, kCancelled, kFailed };

    /// Begins. Bypassed and missing effects are left out. `tail` frames of silence follow the sound. Throws
    /// std::runtime_error when it cannot begin: a file that cannot be read or written, or is not the one that the
    /// session has opened; an effect that refuses.
    RenderJob(Session& session, const std::string& output, std::int64_t tail);
    /// Cancels what still runs, and leaves no file then.
    ~RenderJob();
    RenderJob(const RenderJob&) = delete;
    RenderJob& operator=(const RenderJob&) = delete;

    State GetState() const { return mState; }
    /// What went wrong, once it has failed.
    const std::string& GetError() const { return mError; }
    /// From 0 to 1.
    double GetProgress() const { return mProgress; }
    void Cancel() { mIsCancelled = true; }

private:
    void OpenInputs(Session& session, const std::string& output);
    void CheckInputs(const Session& session) const;
    void FillChain(Session& session);
    void Run();

    std::unique_ptr<AudioFileReader> mInput;
    std::unique_ptr<AudioFileReader> mSideChain;
    EffectChain mChain;
    std::unique_ptr<AudioFileWriter> mOutput;
    std::unique_ptr<Renderer> mRenderer;
    std::string mError;  ///< written before mState says that it is there
    std::atomic<double> mProgress;
    std::atomic<bool> mIsCancelled;
    std::atomic<State> mState;
    std::thread mThread;
};

}  // namespace tessaly
