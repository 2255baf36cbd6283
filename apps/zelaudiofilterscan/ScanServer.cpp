#include "ScanServer.h"

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include <boost/bind/bind.hpp>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Threads.h>
#include <zelcore/Utf.h>

#include "ProcessSupport.h"

namespace zelaudiofilterscan {

namespace protocol = zelaudiofilterhost::scanprotocol;
using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelaudiofilterhost::PluginModuleScanner;
using zelcore::ustring;
using zelcore::utf8string;
using zelcore::filesupport::File;
using zelcore::serialization::Variant;
using zelcore::utility::UTF8to16;
using zelmarshal::RPCError;

namespace {

ustring ToText(const Variant& value) {
    const utf8string* text = value ? boost::any_cast<utf8string>(value.get()) : nullptr;
    if (!text) throw RPCError(zelmarshal::kErrorInvalidParams, "a text was expected");
    return UTF8to16(*text);
}

const zelcore::serialization::Array& ToArray(const Variant& value) {
    const auto* array = value ? boost::any_cast<zelcore::serialization::Array>(value.get()) : nullptr;
    if (!array) throw RPCError(zelmarshal::kErrorInvalidParams, "an array was expected");
    return *array;
}

void ExpectCount(const zelcore::serialization::Array& parameters, std::size_t count) {
    if (parameters.size() != count)
        throw RPCError(zelmarshal::kErrorInvalidParams, std::to_string(count) + " arguments were expected");
}

std::vector<PluginLocator> ToLocators(const Variant& value) {
    std::vector<PluginLocator> locators;
    for (const Variant& text : ToArray(value)) {
        locators.push_back(PluginLocator::FromString(ToText(text)));
        if (locators.back().GetPath().empty())
            throw RPCError(zelmarshal::kErrorInvalidParams, "a plug-in locator was expected");
    }
    return locators;
}

}  // namespace

ScanServer::ScanServer(Watchdog& watchdog) : mWatchdog(watchdog), mReached(0), mTotal(0) {
    Register(protocol::kConnect, &ScanServer::Connect);
    Register(protocol::kBeginScanForPlugins, &ScanServer::BeginScanForPlugins);
    Register(protocol::kGetScanInfo, &ScanServer::GetScanInfo);
    Register(protocol::kScanOneEntity, &ScanServer::ScanOneEntity);
    Register(protocol::kEndScan, &ScanServer::EndScan);
}

void ScanServer::Register(const char* name, Method method) {
    mServer.RegisterMethod(name, [this, method](const Parameters& parameters, const Answer& answer) {
        zelcore::threads::AsyncCallFromMainThread(boost::bind(&ScanServer::Run, this, method, parameters, answer));
    });
}

void ScanServer::Run(Method method, const Parameters& parameters, const Answer& answer) {
    try {
        (this->*method)(parameters, answer);
    } catch (const RPCError& error) {
        answer.Fail(error.GetCode(), error.what());
    } catch (const std::exception& error) {
        answer.Fail(zelmarshal::kErrorInternal, error.what());
    }
}

void ScanServer::Serve(const boost::shared_ptr<zeltransport::Session>& session) {
    mWatchdog.ClientConnected();
    mServer.Serve(session, boost::bind(&ProcessSupport::EndNow, protocol::kScannerExitDone));
}

void ScanServer::Connect(const Parameters& parameters, const Answer& answer) {
    ExpectCount(parameters, 4);
    const File userBans(ToText(parameters[1]));
    const File permanentBans(ToText(parameters[2]));
    const ustring resultPath = ToText(parameters[3]);
    if (resultPath != ToText(parameters[0]) + zelcore::utility::AsciiToUTF16(protocol::kResultFileSuffix))
        throw RPCError(zelmarshal::kErrorInvalidParams, "the result file does not belong to the catalogue");
    if (!mResultPath.empty()) throw RPCError(zelmarshal::kErrorInvalidRequest, "connected already");
    // The result file is shared by all who use the profile: other scanners wait until this process ends.
    mProfileLock = std::make_unique<zelcore::filesupport::FolderLock>(File(resultPath).GetDir());
    if (!mProfileLock->Acquire())
        throw RPCError(zelmarshal::kErrorInvalidParams, "the folder of the result file cannot be opened");
    // A list that is not there, or cannot be read, bans nothing here: the client has left out what it knows of already.
    BannedPluginManager::GetInstance().LoadStaticConfiguration(permanentBans);
    if (userBans.Exists()) BannedPluginManager::GetInstance().LoadConfiguration(userBans);
    mResultPath = resultPath;
    answer.Reply(boost::any());
}

void ScanServer::BeginScanForPlugins(const Parameters& parameters, const Answer& answer) {
    if (mResultPath.empty()) throw RPCError(zelmarshal::kErrorInvalidRequest, "not connected");
    if (mScanner) throw RPCError(zelmarshal::kErrorInvalidRequest, "a scan is going on");
    ExpectCount(parameters, 1);
    mScanner = new PluginModuleScanner(ToLocators(parameters[0]), false);
    mScanner->BeginScan();
    answer.Reply(boost::any());
}

void ScanServer::GetScanInfo(const Parameters&, const Answer& answer) {
    if (!mScanner) throw RPCError(zelmarshal::kErrorInvalidRequest, "no scan is going on");
    PluginLocator locator;
    ustring text;
    // At the end the position stays where the last plug-in was: whoever shows it late must not see it go back.
    const bool more = mScanner->GetCurrentProgressInfo(locator, text, mReached, mTotal);
    boost::any info = zelcore::serialization::Object();
    using zelcore::serialization::SetInObject;
    SetInObject(info, protocol::kKeyLocator, zelcore::utility::UTF16to8(locator.ToString()));
    SetInObject(info, protocol::kKeySubcomponent, zelcore::utility::UTF16to8(text));
    SetInObject(info, protocol::kKeyProgress, boost::int32_t(mReached));
    SetInObject(info, protocol::kKeyTotal, boost::int32_t(mTotal));
    SetInObject(info, protocol::kKeyContinue, more);
    answer.Reply(info);
}

void ScanServer::ScanOneEntity(const Parameters&, const Answer& answer) {
    PluginLocator locator;
    ustring text;
    int current = 0;
    int total = 0;
    if (!mScanner || !mScanner->GetCurrentProgressInfo(locator, text, current, total))
        throw RPCError(zelmarshal::kErrorInvalidRequest, "there is no plug-in to scan");
    mWatchdog.PluginBegins();
    mScanner->ContinueScan();
    mWatchdog.PluginEnds();
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    zelcore::utility::FileUtils::SimpleWriteStringToFile(mResultPath, catalogue.GetConfigurationText({locator}));
    // The client keeps the catalogue; here each plug-in is forgotten once it is described.
    catalogue.RemovePluginLocators({locator});
    answer.Reply(boost::any());
}

void ScanServer::EndScan(const Parameters&, const Answer& answer) {
    if (!mScanner) throw RPCError(zelmarshal::kErrorInvalidRequest, "no scan is going on");
    mScanner->EndScan();
    mScanner.reset();
    answer.Reply(boost::any());
}

}  // namespace zelaudiofilterscan
