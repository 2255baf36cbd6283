#pragma once

#include <memory>
#include <string>
#include <vector>

class QLockFile;

namespace tessaly {

/// Says, in a file of the preferences folder, that the application runs and with which session, so that the next start
/// knows of a run that did not come to its end. Several may run at once. Main thread.
class RunMarker {
public:
    /// A run that was killed, or crashed.
    struct LostRun {
        std::string sessionPath;   ///< UTF-8; empty for a session that was never saved
        bool wasModified = false;  ///< it had changes that were not saved
    };

    /// Marks this run. Where the folder cannot be written to there is no mark, and no error.
    RunMarker();
    /// This run has come to its end.
    ~RunMarker();
    RunMarker(const RunMarker&) = delete;
    RunMarker& operator=(const RunMarker&) = delete;

    /// Keeps what the next start is to know if this run is lost.
    void Note(const std::string& sessionPath, bool isModified);

    /// Leaves the mark behind when this run ends: it ends with something lost.
    void Leave() { mIsLeft = true; }

    /// The runs that were lost; each is told once.
    static std::vector<LostRun> TakeLostRuns();

private:
    std::unique_ptr<QLockFile> mLock;
    std::string mPath;
    bool mIsLeft = false;
};

}  // namespace tessaly
