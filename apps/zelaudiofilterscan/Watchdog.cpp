#include "Watchdog.h"

#include <cstdlib>

#include <zelaudiofilterhost/ScanProtocol.h>

#include "ProcessSupport.h"

namespace zelaudiofilterscan {

namespace protocol = zelaudiofilterhost::scanprotocol;

namespace {

/// How often memory and the client's process are looked at.
constexpr std::chrono::milliseconds kPeriod(25);
constexpr std::chrono::seconds kTimeToConnect(20);

long ReadPositive(const char* variable, long defaultValue) {
    const char* text = std::getenv(variable);
    if (!text) return defaultValue;
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    return end != text && *end == '\0' && value > 0 ? value : defaultValue;
}

}  // namespace

Watchdog::Limits Watchdog::ReadLimits() {
    Limits limits;
    limits.timePerPlugin =
        std::chrono::seconds(ReadPositive(protocol::kTimeLimitVariable, protocol::kDefaultTimeLimitSeconds));
    limits.memoryMegabytes =
        static_cast<std::size_t>(ReadPositive(protocol::kMemoryLimitVariable, protocol::kDefaultMemoryLimitMegabytes));
    limits.timeToConnect = kTimeToConnect;
    return limits;
}

Watchdog::Watchdog(const Limits& limits)
    : mLimits(limits),
      mStart(std::chrono::steady_clock::now()),
      mConnected(false),
      mScanning(false),
      mStopped(false),
      mMemoryAtStart(0),
      mThread(&Watchdog::Run, this) {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard lock(mMutex);
        mStopped = true;
    }
    mChanged.notify_all();
    mThread.join();
}

void Watchdog::ClientConnected() {
    const std::lock_guard lock(mMutex);
    mConnected = true;
}

void Watchdog::PluginBegins() {
    const std::lock_guard lock(mMutex);
    mPluginStart = std::chrono::steady_clock::now();
    mMemoryAtStart = ProcessSupport::GetResidentMegabytes();
    mScanning = true;
}

void Watchdog::PluginEnds() {
    const std::lock_guard lock(mMutex);
    mScanning = false;
}

void Watchdog::Run() {
    std::unique_lock lock(mMutex);
    while (!mStopped) {
        Check(std::chrono::steady_clock::now());
        mChanged.wait_for(lock, kPeriod);
    }
}

void Watchdog::Check(std::chrono::steady_clock::time_point now) const {
    if (ProcessSupport::IsOrphaned()) ProcessSupport::EndNow(protocol::kScannerExitDone);
    if (!mConnected && now - mStart > mLimits.timeToConnect) ProcessSupport::EndNow(protocol::kScannerExitNoClient);
    if (!mScanning) return;
    if (now - mPluginStart > mLimits.timePerPlugin) ProcessSupport::EndNow(protocol::kScannerExitHang);
    if (ProcessSupport::GetResidentMegabytes() > mMemoryAtStart + mLimits.memoryMegabytes)
        ProcessSupport::EndNow(protocol::kScannerExitMemory);
}

}  // namespace zelaudiofilterscan
