#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/thread/mutex.hpp>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/ustring.h>

namespace zeltransport {
class Session;
class SocketTransport;
}  // namespace zeltransport
namespace zelmarshal {
class RPCClient;
}

namespace zelaudiofilterhostui {

using zelaudiofilterhost::PluginLocator;
using zelcore::ustring;

/// The client side of scanning in the scanner process. Not exported and not for hosts: it stands here because
/// AudioPluginScan holds one by value.
///
/// Starts the scanner, has it scan one plug-in after the other, bans a plug-in that takes it down and starts it again
/// for the rest. Scan, Stop, the constructor and the destructor belong to the main thread. The conversation's handlers
/// run on the transport's I/O thread; what they have to do with the catalogue or the user interface they post to the
/// main thread, where it is dropped if the scan it belongs to has been stopped or this object has gone.
class ExternalAudioPluginScan {
public:
    /// Gets the plug-in, the text to show behind its name, its position and the total. A position above the total is
    /// the end of the scan. Called on the main thread with the object's lock held: it must not call back into the
    /// object.
    typedef boost::function<void(const PluginLocator& locator, const ustring& text, int current, int total)>
        ProgressFunction;

    ExternalAudioPluginScan();
    /// Lets go of the connection and waits for its thread. Does not end the scanner process: whoever had a scan started
    /// calls Stop first.
    ~ExternalAudioPluginScan();
    ExternalAudioPluginScan(const ExternalAudioPluginScan&) = delete;
    ExternalAudioPluginScan& operator=(const ExternalAudioPluginScan&) = delete;

    /// Starts a scan of `locators` and returns at once: true when the scanner process was started, false when its
    /// executable is missing or cannot be started. The paths are those of the catalogue, the user ban list and the
    /// permanent ban list, as full paths.
    bool Scan(const ustring& registryPath, const ustring& bannedPath, const ustring& permanentBannedPath,
              const std::vector<PluginLocator>& locators, ProgressFunction callback);

    /// Ends the scan, the connection and the scanner process. The end is reported if it was not yet. When it returns,
    /// every result that arrived is in the catalogue, and the progress function has been let go of.
    void Stop();

private:
    typedef boost::shared_ptr<boost::any> Reply;
    typedef void (ExternalAudioPluginScan::*MainThreadCall)();

    bool Launch();
    void Connect();
    void Relaunch();
    void SendConnect();
    void SendBeginScan();
    void SendGetScanInfo();
    void SendRequest(const boost::shared_ptr<boost::any>& request,
                     void (ExternalAudioPluginScan::*onReply)(const Reply& reply));

    void OnConnected(const Reply& reply);
    void OnScanBegun(const Reply& reply);
    void OnScanInfo(const Reply& reply);
    void OnEntityScanned(const Reply& reply);
    void OnRequestError(int code);
    void OnSessionClosed();

    void PostToMainThread(MainThreadCall call);
    void PostProgress(const PluginLocator& locator, const ustring& text);
    void PostFinishUnlessFinished();
    void ReportProgress(const PluginLocator& locator, const ustring& text);
    void Finish();
    void FinishUnlessFinished();

    void TakeResults();

    /// These two with the lock held.
    void BanCurrentPlugin();
    bool DecideRestart();
    void ReleaseConnection();

    boost::shared_ptr<zeltransport::SocketTransport> mTransport;
    boost::shared_ptr<zeltransport::Session> mSession;
    boost::shared_ptr<zelmarshal::RPCClient> mClient;
    bool mFinished;                         ///< the end has been reported
    unsigned mProgress;                     ///< position last reported: the offset and the scanner's own count
    unsigned mProgressOffset;               ///< position that earlier scanner processes of this scan reached
    unsigned mTotal;                        ///< the first total that a scanner gave
    std::vector<PluginLocator> mRemaining;  ///< not yet reported as reached
    ProgressFunction mProgressCallback;
    bool mConnected;         ///< from the reply to the first request until the connection closes
    bool mKeepGoing;         ///< a lost scanner is started again; false once the scan was stopped
    boost::mutex mMutex;     ///< guards everything above, mCurrent and mCurrentIsDone; never taken twice
    PluginLocator mCurrent;  ///< the plug-in that the scanner last said it is working on
    bool mCurrentIsDone;     ///< its scan was answered and the next one is not known yet
    ustring mRegistryPath;
    ustring mBannedPath;
    ustring mPermanentBannedPath;
    void* mProcess;         ///< the platform's handle of the scanner process, or null
    ustring mScanFilePath;  ///< where the scanner leaves the description of the plug-in just scanned

    /// How many plug-ins remained when the present scanner was launched, and how many scanners in a row reached none:
    /// so that one that can never work is not started over and over.
    std::size_t mRemainingAtLaunch;
    int mFruitlessLaunches;

    /// Descriptions that have arrived and are not in the catalogue yet, which only the main thread may change.
    std::vector<std::string> mResults;

    /// What posted calls hold on to weakly: a new one for each scan, gone when the scan was stopped.
    boost::shared_ptr<ExternalAudioPluginScan*> mCallTarget;
};

}  // namespace zelaudiofilterhostui
