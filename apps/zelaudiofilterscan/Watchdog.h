#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>

namespace zelaudiofilterscan {

/// Ends the process when a plug-in takes too long or too much memory, when nobody connects, or when the process that
/// started the scanner has gone. Has a thread of its own, since the main one may hang in a plug-in. Any thread.
class Watchdog {
public:
    struct Limits {
        std::chrono::seconds timePerPlugin;
        std::size_t memoryMegabytes;  ///< more than when the plug-in began
        std::chrono::seconds timeToConnect;
    };

    explicit Watchdog(const Limits& limits);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    void ClientConnected();
    void PluginBegins();
    void PluginEnds();

    /// The limits of the environment, or the default ones; a value that is no positive number is passed over.
    static Limits ReadLimits();

private:
    void Run();
    void Check(std::chrono::steady_clock::time_point now) const;

    const Limits mLimits;
    const std::chrono::steady_clock::time_point mStart;
    bool mConnected;
    bool mScanning;
    bool mStopped;
    std::chrono::steady_clock::time_point mPluginStart;
    std::size_t mMemoryAtStart;
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::thread mThread;
};

}  // namespace zelaudiofilterscan
