#pragma once

#include <chrono>
#include <set>
#include <string>
#include <vector>

#include "HostReport.h"
#include "RoundPlan.h"
#include "support/Program.h"
#include "Workplace.h"

namespace zelfaults {

/// One round: an application scans in a profile with a history, something befalls it or its scanner, and then what must
/// hold is looked for in the processes and in the files, and by another application that starts in the same profile and
/// scans undisturbed.
class Round {
public:
    /// `number` sets it apart from others of this machine.
    Round(Workplace& workplace, const RoundPlan& plan, const HostReport& base, unsigned long number);

    /// Runs it; what did not hold, a line each.
    std::vector<std::string> Run();

    bool WasCancelled() const { return mWasCancelled; }
    /// How long the scan took.
    std::chrono::milliseconds GetScanTime() const { return mScanTime; }
    /// What the programs said, for people.
    const std::string& GetProtocol() const { return mProtocol; }

private:
    typedef std::vector<std::string> Words;

    void Disturb();
    void KillFromOutside(zeltests::Program& host, bool& isHostKilled, bool& isScannerKilled);
    void Look();

    Words GetEnvironment(bool isDisturbed) const;
    bool UsesRealScanner() const;
    std::string GetScanFolder() const;
    void CheckEnd(int code);
    void CheckProcesses();
    void CheckBans(const HostReport& report);
    void CheckCatalogue(const HostReport& report);
    /// Plug-ins that may be banned now and were not before.
    std::set<std::string> FindBlamable() const;
    void Problem(const std::string& text) { mProblems.push_back(text); }

    Workplace& mWorkplace;
    const RoundPlan& mPlan;
    const HostReport& mBase;
    const std::string mToken;
    const std::string mProfile;
    const std::string mFolder;
    std::string mMarked;  ///< the plug-in that the application was loading itself when it was killed
    std::string mProtocol;
    Words mProblems;
    bool mWasCancelled = false;
    std::chrono::steady_clock::time_point mBegin;
    std::chrono::milliseconds mScanTime{0};
};

}  // namespace zelfaults
