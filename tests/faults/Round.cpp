#include "Round.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

#include "Processes.h"
#include "ScanLog.h"
#include "support/WaitFor.h"

namespace zelfaults {

namespace fs = std::filesystem;
using std::chrono::steady_clock;
using zeltests::Program;
using zeltests::WaitFor;

namespace {

constexpr std::chrono::seconds kLongestRun(90);
constexpr std::chrono::seconds kLongestGoodbye(20);
// The system cuts names of processes off.
constexpr char kScannerName[] = "zelaudiofilters";

std::string Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::string NameOf(const std::string& path) { return fs::path(path).filename().string(); }

std::string Join(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += " " + word;
    return text;
}

}  // namespace

Round::Round(Workplace& workplace, const RoundPlan& plan, const HostReport& base, unsigned long number)
    : mWorkplace(workplace),
      mPlan(plan),
      mBase(base),
      mToken("ZEL_FAULT_ROUND=" + std::to_string(getpid()) + "-" + std::to_string(number) + "."),
      mProfile(workplace.MakeProfile(plan.onSmallDisk)),
      mFolder(workplace.MakeRoundFolder()) {}

std::vector<std::string> Round::Run() {
    const std::set<std::string> shared = Workplace::ListSharedMemory();
    Disturb();
    CheckProcesses();
    // What befell the profile's disk is over.
    fs::permissions(mProfile, fs::perms::owner_all);
    fs::remove(mProfile + "/filler");
    Look();
    CheckProcesses();
    if (Workplace::ListSharedMemory() != shared) Problem("shared memory is left");
    return mProblems;
}

Round::Words Round::GetEnvironment(bool isDisturbed) const {
    Words environment = {mToken,
                         "QT_QPA_PLATFORM=offscreen",
                         "TMPDIR=" + mFolder + "/tmp",
                         "ZEL_SCANNER_TIMEOUT_SECONDS=20",
                         "ASAN_OPTIONS=detect_leaks=0:handle_segv=0:allocator_may_return_null=1",
                         "ZEL_FAULT_PROFILE=" + mProfile};
    if (!isDisturbed) return environment;
    if (!mPlan.host.IsNone()) environment.push_back(std::string(FaultPlan::kHostVariable) + "=" + mPlan.host.ToText());
    if (UsesRealScanner()) return environment;
    environment.push_back("ZEL_FAULT_SCANNER_FOLDER=" ZEL_BIN_DIR "/faults");
    environment.push_back("ZEL_FAULT_LOG=" + mFolder + "/log");
    environment.push_back("ZEL_FAULT_TIMES=" + std::to_string(mPlan.scannerTimes));
    environment.push_back(std::string(FaultPlan::kScannerVariable) + "=" + mPlan.scanner.ToText());
    return environment;
}

bool Round::UsesRealScanner() const {
    return mPlan.scanner.IsNone() && (!mPlan.kind->mayBlame || mPlan.MayHostBeKilled());
}

std::string Round::GetScanFolder() const {
    return mPlan.withDeadly ? mWorkplace.GetDeadlyFolder() : mWorkplace.GetGoodFolder();
}

void Round::Disturb() {
    Program host(mFolder,
                 {ZEL_BIN_DIR "/fault_host", mProfile, "scan", mPlan.everything ? "all" : "new",
                  mPlan.isSeparate ? "separate" : "inside", GetScanFolder()},
                 GetEnvironment(true));
    bool isHostKilled = mPlan.killHostAfter < 0;
    bool isScannerKilled = mPlan.killScannerAfter < 0;
    bool hasBegun = false;
    const bool hasEnded = WaitFor(
        [&] {
            if (!hasBegun && (hasBegun = host.GetOutput().find("begin\n") != std::string::npos))
                mBegin = steady_clock::now();
            if (hasBegun) KillFromOutside(host, isHostKilled, isScannerKilled);
            return !host.IsRunning();
        },
        kLongestRun);
    mScanTime = std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - mBegin);
    if (!hasEnded) {
        Problem("the application hangs");
        Processes::Kill(Processes::FindWith(mToken));
    }
    const int code = host.Wait();
    mProtocol +=
        host.GetOutput() + host.GetErrors() + "ended with " + std::to_string(code) + "\n" + Read(mFolder + "/log");
    mWasCancelled = host.GetOutput().find("cancelled\n") != std::string::npos;
    // A marker that a run leaves which was not killed blames somebody who did nothing, but on a disk that takes nothing
    // any more nobody can take it away.
    const std::string marker = Read(mProfile + "/ScannedPluginPath.txt");
    const bool isDiskReadOnly = mPlan.host.what == "file" && mPlan.host.how == "readonly";
    if ((code < 0 || isDiskReadOnly) && !mPlan.isSeparate) mMarked = marker.substr(marker.rfind('|') + 1);
    if (hasEnded) CheckEnd(code);
}

void Round::KillFromOutside(Program& host, bool& isHostKilled, bool& isScannerKilled) {
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - mBegin).count();
    if (!isHostKilled && passed >= mPlan.killHostAfter) {
        host.Signal(SIGKILL);
        isHostKilled = true;
    }
    if (!isScannerKilled && passed >= mPlan.killScannerAfter) {
        const std::vector<pid_t> scanners = Processes::FindWith(mToken, kScannerName);
        Processes::Kill(scanners);
        isScannerKilled = !scanners.empty();
    }
}

void Round::CheckEnd(int code) {
    const bool wasKilled = code == -SIGKILL && mPlan.MayHostBeKilled();
    const bool endedByItself = code == 0 || code == 1;
    if (!wasKilled && !endedByItself && !mPlan.kind->mayDie)
        Problem("the application ended with " + std::to_string(code));
    if (mWasCancelled && !mPlan.kind->mayStop) Problem("the scan came to a halt and had to be cancelled");
}

void Round::CheckProcesses() {
    if (WaitFor([this] { return Processes::FindWith(mToken).empty(); }, kLongestGoodbye)) return;
    const std::vector<pid_t> left = Processes::FindWith(mToken);
    if (!left.empty()) Problem("processes are left:" + Processes::Describe(left));
    Processes::Kill(left);
}

void Round::Look() {
    Program host(mFolder, {ZEL_BIN_DIR "/fault_host", mProfile, "look", GetScanFolder()}, GetEnvironment(false));
    if (!WaitFor([&] { return !host.IsRunning(); }, kLongestRun)) {
        Problem("the next start hangs");
        Processes::Kill(Processes::FindWith(mToken));
    }
    const int code = host.Wait();
    mProtocol += "-- the next start\n" + host.GetOutput() + host.GetErrors();
    const HostReport report(host.GetOutput());
    if (code != 0 || !report.isComplete) return Problem("the next start ended with " + std::to_string(code));
    if (!report.areFilesWhole) Problem("a file cannot be read");
    CheckCatalogue(report);
    CheckBans(report);
    const Words leftovers = mWorkplace.FindLeftovers(mProfile);
    if (!leftovers.empty()) Problem("files are left:" + Join(leftovers));
    if (!fs::is_empty(mFolder + "/tmp")) Problem("temporary files are left");
}

std::set<std::string> Round::FindBlamable() const {
    const std::string& what = mPlan.scanner.what;
    const bool isHeard = what != "twice" && what != "order" && what != "type";
    std::set<std::string> blamable = ScanLog(mFolder + "/log", isHeard).workedOn;
    if (!mPlan.kind->mayBlame) blamable.clear();
    blamable.insert(mMarked);
    return blamable;
}

void Round::CheckBans(const HostReport& report) {
    const std::set<std::string> blamable = FindBlamable();
    for (const HostState* state : {&report.files, &report.started, &report.scanned}) {
        for (const auto& [path, reason] : mBase.files.bans) {
            const auto found = state->bans.find(path);
            if (found == state->bans.end() || found->second != reason) Problem("a ban is lost: " + path);
        }
        for (const auto& [path, reason] : state->bans) {
            const bool isDue = mBase.files.bans.contains(path) || Workplace::IsDeadly(path) || blamable.contains(path);
            if (!isDue) Problem("banned although it did nothing: " + NameOf(path) + " (" + reason + ")");
        }
        if (!state->hasPermanentBans) Problem("the permanent bans are lost");
    }
}

void Round::CheckCatalogue(const HostReport& report) {
    const Words plugins = Workplace::ListPlugins(GetScanFolder());
    for (const HostState* state : {&report.files, &report.started, &report.scanned}) {
        for (const auto& [path, isEnabled] : mBase.files.entries) {
            // What is scanned leaves the catalogue first; the next scan brings it back.
            const bool isScanned = fs::path(path).parent_path() == GetScanFolder();
            const auto found = state->entries.find(path);
            const bool isMissing = found == state->entries.end();
            if (isMissing && !(isScanned && (state != &report.scanned || state->bans.contains(path))))
                Problem("lost from the catalogue: " + NameOf(path));
            if (!isMissing && found->second != isEnabled) Problem("the user's choice is lost: " + NameOf(path));
        }
        for (const std::string& path : mBase.files.failed)
            if (!state->failed.contains(path)) Problem("lost from the failed ones: " + NameOf(path));
    }
    for (const std::string& path : plugins) {
        const HostState& end = report.scanned;
        if (Workplace::IsGood(path) && !end.entries.contains(path) && !end.bans.contains(path))
            Problem("not found by the next scan: " + NameOf(path));
        if (Workplace::IsDeadly(path) && !end.bans.contains(path)) Problem("not banned at last: " + NameOf(path));
    }
}

}  // namespace zelfaults
