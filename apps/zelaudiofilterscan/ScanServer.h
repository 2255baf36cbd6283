#pragma once

#include <memory>

#include <boost/intrusive_ptr.hpp>
#include <boost/shared_ptr.hpp>
#include <zelaudiofilterhost/PluginModuleScanner.h>
#include <zelcore/FolderLock.h>
#include <zelcore/ustring.h>
#include <zelmarshal/RPCServer.h>

#include "Watchdog.h"

namespace zelaudiofilterscan {

/// Answers the scan client: one client, one scan. Everything but the hand-over from the I/O thread happens on the main
/// thread, where plug-ins expect to be loaded.
class ScanServer {
public:
    explicit ScanServer(Watchdog& watchdog);
    ScanServer(const ScanServer&) = delete;
    ScanServer& operator=(const ScanServer&) = delete;

    /// Serves the client behind `session`; when it goes, the process ends at once, whatever a plug-in is doing. I/O
    /// thread.
    void Serve(const boost::shared_ptr<zeltransport::Session>& session);

private:
    typedef zelcore::serialization::Array Parameters;
    typedef zelmarshal::RPCServer::Answer Answer;
    typedef void (ScanServer::*Method)(const Parameters& parameters, const Answer& answer);

    void Register(const char* name, Method method);
    void Run(Method method, const Parameters& parameters, const Answer& answer);

    void Connect(const Parameters& parameters, const Answer& answer);
    void BeginScanForPlugins(const Parameters& parameters, const Answer& answer);
    void GetScanInfo(const Parameters& parameters, const Answer& answer);
    void ScanOneEntity(const Parameters& parameters, const Answer& answer);
    void EndScan(const Parameters& parameters, const Answer& answer);

    Watchdog& mWatchdog;
    zelmarshal::RPCServer mServer;
    boost::intrusive_ptr<zelaudiofilterhost::PluginModuleScanner> mScanner;
    int mReached;
    int mTotal;
    zelcore::ustring mResultPath;
    std::unique_ptr<zelcore::filesupport::FolderLock> mProfileLock;
};

}  // namespace zelaudiofilterscan
