#include <zelaudiofilterhostui/ExternalAudioPluginScan.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <string>

#include <boost/bind/bind.hpp>
#include <boost/make_shared.hpp>
#include <boost/thread/lock_guard.hpp>
#include <boost/weak_ptr.hpp>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/File.h>
#include <zelcore/FileError.h>
#include <zelcore/FolderLock.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Threads.h>
#include <zelcore/Utf.h>
#include <zelmarshal/RPCClient.h>
#include <zeltransport/SocketTransport.h>

#include "scan/ScanCalls.h"
#include "scan/ScannerLocation.h"
#include "scan/ScannerProcess.h"

namespace zelaudiofilterhostui {

namespace protocol = zelaudiofilterhost::scanprotocol;
using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::filesupport::File;
using zelcore::threads::AsyncCallFromMainThread;
using zelcore::utility::AsciiToUTF16;

namespace {

typedef boost::lock_guard<boost::mutex> Lock;

/// How many scanners in a row may be lost without reaching a plug-in before the scan gives up.
constexpr int kMaxFruitlessLaunches = 3;

/// Longer than the scanner waits for its port, so that a scanner which has to wait is still found.
constexpr std::chrono::milliseconds kConnectTimeout(15000);

/// The most that the description of one plug-in may take; a larger file is not read.
constexpr std::uint64_t kMaxResultSize = 16 * 1024 * 1024;

/// The result file's bytes; empty where there is none, or none that could be used.
std::string ReadResultFile(const ustring& path) {
    const File file(path);
    std::string bytes;
    try {
        if (!file.Exists()) return bytes;
        zelcore::filesupport::IPlatformByteStream stream(file, zelcore::filesupport::IPlatformByteStream::kRead);
        const std::uint64_t length = stream.Length();
        if (length > kMaxResultSize) return bytes;
        bytes.resize(static_cast<std::size_t>(length));
        bytes.resize(stream.ReadBlock(bytes.data(), bytes.size()));
    } catch (const zelcore::filesupport::FileError&) {
        // A result that cannot be read is one plug-in less in the catalogue, no reason to end the scan.
        bytes.clear();
    }
    return bytes;
}

/// Deletes the result file, unless the scanner of another host with the same profile is using it.
void DeleteResultFile(const ustring& path, bool isOurs) {
    const File file(path);
    zelcore::filesupport::FolderLock lock(file.GetDir());
    if ((isOurs || lock.TryAcquire()) && file.Exists()) file.Delete();
}

}  // namespace

ExternalAudioPluginScan::ExternalAudioPluginScan()
    : mFinished(false),
      mProgress(0),
      mProgressOffset(0),
      mTotal(0),
      mConnected(false),
      mKeepGoing(true),
      mCurrentIsDone(false),
      mProcess(nullptr),
      mRemainingAtLaunch(0),
      mFruitlessLaunches(0) {}

ExternalAudioPluginScan::~ExternalAudioPluginScan() { ReleaseConnection(); }

bool ExternalAudioPluginScan::Scan(const ustring& registryPath, const ustring& bannedPath,
                                   const ustring& permanentBannedPath, const std::vector<PluginLocator>& locators,
                                   ProgressFunction callback) {
    mCurrent = PluginLocator();
    mRemaining = locators;
    mProgressCallback = callback;
    mRegistryPath = registryPath;
    mBannedPath = bannedPath;
    mPermanentBannedPath = permanentBannedPath;
    mScanFilePath = registryPath + AsciiToUTF16(protocol::kResultFileSuffix);
    mProgress = mProgressOffset = mTotal = 0;
    mConnected = false;
    mKeepGoing = true;
    mCurrentIsDone = false;
    mFinished = false;
    mProcess = nullptr;
    mFruitlessLaunches = 0;
    mResults.clear();
    mCallTarget = boost::make_shared<ExternalAudioPluginScan*>(this);
    DeleteResultFile(mScanFilePath, false);
    if (Launch()) return true;
    mProgressCallback.clear();
    return false;
}

bool ExternalAudioPluginScan::Launch() {
    const File executable = ScannerLocation::Find();
    if (!executable.Exists()) return false;
    ReleaseConnection();
    if (mProcess) ScannerProcess::Abandon(mProcess);
    mProcess = ScannerProcess::Start(executable);
    if (!mProcess) return false;
    try {
        Connect();
    } catch (...) {
        ReleaseConnection();
        ScannerProcess::Terminate(mProcess);
        mProcess = nullptr;
        throw;
    }
    return true;
}

void ExternalAudioPluginScan::Connect() {
    zeltransport::ClientOptions options;
    options.connectTimeout = kConnectTimeout;
    options.serverProcess = ScannerProcess::GetId(mProcess);
    options.keepTrying = boost::bind(&ScannerProcess::IsRunning, mProcess);
    const boost::shared_ptr<zeltransport::SocketTransport> transport = zeltransport::SocketTransport::Create(1);
    const boost::shared_ptr<zeltransport::Session> session =
        transport->ClientStart(protocol::kScannerAddress, protocol::kScannerPort, options);
    {
        const Lock lock(mMutex);
        mTransport = transport;
        mSession = session;
        mClient = boost::make_shared<zelmarshal::RPCClient>(session, protocol::kClientName);
        mRemainingAtLaunch = mRemaining.size();
    }
    session->SetConnectionClosedHandler(boost::bind(&ExternalAudioPluginScan::OnSessionClosed, this));
    SendConnect();
}

void ExternalAudioPluginScan::Relaunch() {
    {
        const Lock lock(mMutex);
        if (mFinished) return;
    }
    try {
        Launch();
    } catch (const std::exception&) {
        // Nobody up the main loop could deal with it. As for a scanner that cannot be started again, the dialog stays
        // until the user closes it.
    }
}

void ExternalAudioPluginScan::SendRequest(const boost::shared_ptr<boost::any>& request,
                                          void (ExternalAudioPluginScan::*onReply)(const Reply& reply)) {
    boost::shared_ptr<zelmarshal::RPCClient> client;
    {
        const Lock lock(mMutex);
        client = mClient;
    }
    if (!client) return;
    client->SendRequest(request, boost::bind(onReply, this, boost::placeholders::_1),
                        boost::bind(&ExternalAudioPluginScan::OnRequestError, this, boost::placeholders::_1), 0);
}

void ExternalAudioPluginScan::SendConnect() {
    SendRequest(ScanCalls::Connect(mRegistryPath, mBannedPath, mPermanentBannedPath, mScanFilePath),
                &ExternalAudioPluginScan::OnConnected);
}

void ExternalAudioPluginScan::OnConnected(const Reply&) {
    {
        const Lock lock(mMutex);
        mConnected = true;
    }
    SendBeginScan();
}

void ExternalAudioPluginScan::SendBeginScan() {
    boost::shared_ptr<boost::any> request;
    {
        const Lock lock(mMutex);
        request = ScanCalls::BeginScanForPlugins(mRemaining);
    }
    SendRequest(request, &ExternalAudioPluginScan::OnScanBegun);
}

void ExternalAudioPluginScan::OnScanBegun(const Reply&) { SendGetScanInfo(); }

void ExternalAudioPluginScan::SendGetScanInfo() {
    SendRequest(ScanCalls::GetScanInfo(), &ExternalAudioPluginScan::OnScanInfo);
}

void ExternalAudioPluginScan::OnScanInfo(const Reply& reply) {
    const ScanInfo info = ScanCalls::ReadScanInfo(reply);
    {
        const Lock lock(mMutex);
        mCurrent = info.locator;
        mCurrentIsDone = false;
        if (!mCurrent.GetPath().empty()) {
            const auto found = std::find(mRemaining.begin(), mRemaining.end(), mCurrent);
            if (found != mRemaining.end()) mRemaining.erase(found);
        }
        mProgress = mProgressOffset + info.progress;
        if (mTotal == 0) mTotal = info.total;
    }
    if (!info.goOn) {
        PostFinishUnlessFinished();
        return;
    }
    PostProgress(info.locator, info.subcomponent);
    SendRequest(ScanCalls::ScanOneEntity(), &ExternalAudioPluginScan::OnEntityScanned);
}

void ExternalAudioPluginScan::OnEntityScanned(const Reply&) {
    {
        const Lock lock(mMutex);
        mCurrentIsDone = true;
        const std::string text = ReadResultFile(mScanFilePath);
        if (!text.empty()) {
            mResults.push_back(text);
            PostToMainThread(&ExternalAudioPluginScan::TakeResults);
        }
    }
    SendGetScanInfo();
}

void ExternalAudioPluginScan::TakeResults() {
    std::vector<std::string> results;
    {
        const Lock lock(mMutex);
        results.swap(mResults);
    }
    for (const std::string& text : results) PluginModuleInfoManager::GetInstance().AddConfiguration(text, false);
}

void ExternalAudioPluginScan::OnRequestError(int code) {
    // A request that failed because the connection went is no answer of the scanner's: OnSessionClosed, which follows,
    // decides how the scan goes on.
    if (code == zelmarshal::kErrorConnectionLost) return;
    {
        // Whoever answers with an error lives and works on no plug-in; ending it must blame none.
        const Lock lock(mMutex);
        mCurrent = PluginLocator();
    }
    PostFinishUnlessFinished();
}

void ExternalAudioPluginScan::OnSessionClosed() {
    const Lock lock(mMutex);
    mProgressOffset = mProgress;
    // A scanner that dies between two plug-ins dies of what the first left behind in it: threads, handlers, memory. One
    // that was ended because the scan was stopped says nothing about a plug-in it was done with.
    if (!mCurrent.GetPath().empty() && (mKeepGoing || !mCurrentIsDone)) BanCurrentPlugin();
    if (DecideRestart())
        PostToMainThread(&ExternalAudioPluginScan::Relaunch);
    else if (!mFinished)
        PostToMainThread(&ExternalAudioPluginScan::FinishUnlessFinished);
    mConnected = false;
}

void ExternalAudioPluginScan::BanCurrentPlugin() {
    // Waiting for the main thread could lose the ban if the application ends now, hence here and at once.
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    if (bans.IsBanned(mCurrent)) {
        // The scanner that was started after it is lost as well; the first reason is the true one.
        bans.AddBannedPlugin(mCurrent);
    } else {
        bans.AddBannedPlugin(mCurrent, mKeepGoing
                                           ? ScannerProcess::DescribeEnd(mProcess)
                                           : AsciiToUTF16("the scan was stopped while this plug-in was scanned"));
    }
    try {
        bans.SaveConfiguration(File(mBannedPath));
    } catch (const std::exception&) {
        // There is nobody to tell on this thread. The ban holds in memory, and a plug-in that comes back without its
        // entry in the file only takes down another scanner.
    }
}

bool ExternalAudioPluginScan::DecideRestart() {
    if (!mKeepGoing || mRemaining.empty()) return false;
    // A scanner that never gets as far as a plug-in (somebody else holds the port, a library of its own is missing)
    // would be started for ever.
    mFruitlessLaunches = mRemaining.size() < mRemainingAtLaunch ? 0 : mFruitlessLaunches + 1;
    return mFruitlessLaunches < kMaxFruitlessLaunches;
}

void ExternalAudioPluginScan::PostToMainThread(MainThreadCall call) {
    const boost::weak_ptr<ExternalAudioPluginScan*> target = mCallTarget;
    AsyncCallFromMainThread([target, call] {
        if (const boost::shared_ptr<ExternalAudioPluginScan*> scan = target.lock()) ((*scan)->*call)();
    });
}

void ExternalAudioPluginScan::PostProgress(const PluginLocator& locator, const ustring& text) {
    const boost::weak_ptr<ExternalAudioPluginScan*> target = mCallTarget;
    AsyncCallFromMainThread([target, locator, text] {
        if (const boost::shared_ptr<ExternalAudioPluginScan*> scan = target.lock())
            (*scan)->ReportProgress(locator, text);
    });
}

void ExternalAudioPluginScan::PostFinishUnlessFinished() {
    const Lock lock(mMutex);
    if (!mFinished) PostToMainThread(&ExternalAudioPluginScan::FinishUnlessFinished);
}

void ExternalAudioPluginScan::ReportProgress(const PluginLocator& locator, const ustring& text) {
    const Lock lock(mMutex);
    // A position above the total would be the end of the scan: a scanner that counts wrongly must not bring it about.
    const unsigned total = std::max(mTotal, 1u);
    mProgressCallback(locator, text, static_cast<int>(std::min(mProgress, total)), static_cast<int>(total));
}

void ExternalAudioPluginScan::FinishUnlessFinished() {
    {
        const Lock lock(mMutex);
        if (mFinished) return;
    }
    Finish();
}

void ExternalAudioPluginScan::Finish() {
    const Lock lock(mMutex);
    mProgressCallback(PluginLocator(), ustring(), 1, 0);
    try {
        // While the scanner is connected the profile is its own.
        DeleteResultFile(mScanFilePath, mConnected);
    } catch (const zelcore::filesupport::FileError&) {
        // The next scan deletes it before it starts, or tells that it cannot.
    }
    mFinished = true;
}

void ExternalAudioPluginScan::Stop() {
    bool wasFinished = false;
    {
        const Lock lock(mMutex);
        wasFinished = mFinished;
        mKeepGoing = false;
        mFinished = true;
    }
    ReleaseConnection();
    if (mProcess) ScannerProcess::Terminate(mProcess);
    mProcess = nullptr;
    mCallTarget.reset();
    TakeResults();
    if (!wasFinished) Finish();
    mProgressCallback.clear();
}

void ExternalAudioPluginScan::ReleaseConnection() {
    boost::shared_ptr<zelmarshal::RPCClient> client;
    boost::shared_ptr<zeltransport::Session> session;
    boost::shared_ptr<zeltransport::SocketTransport> transport;
    {
        const Lock lock(mMutex);
        client.swap(mClient);
        session.swap(mSession);
        transport.swap(mTransport);
    }
    if (session) session->Close();
    // Outside the lock: the handlers that still run need it, and the transport waits for them.
    client.reset();
    session.reset();
    transport.reset();
}

}  // namespace zelaudiofilterhostui
