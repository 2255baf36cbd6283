// The scanner's side of a scan: requests as a client may send them, one a line, in any order and with any arguments.
// Each is answered once, and what is scanned is what was announced.
//
// What the requests name is looked for in a folder of the fuzzer's own, whatever they say: this scans, writes results
// and puts lists that it does not understand aside.
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

#include <boost/cstdint.hpp>
#include <boost/make_shared.hpp>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/FileUtils.h>
#include <zelcore/SimpleMainLoop.h>
#include <zelcore/Utf.h>

#include "ProcessSupport.h"
#include "ScanServer.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"
#include "support/FuzzSession.h"
#include "support/RpcAnswer.h"
#include "support/ScratchFolder.h"

using namespace zelcore::serialization;
using namespace zelaudiofilterhost;
using zelcore::utf8string;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;
using zelfuzz::FuzzSession;
using zelfuzz::RpcAnswer;

// The process is the fuzzer's, not the scanner's: it must not end like one.
namespace zelaudiofilterscan {

bool ProcessSupport::IsOrphaned() { return false; }
std::size_t ProcessSupport::GetResidentMegabytes() { return 0; }
void ProcessSupport::EndNow(int) { zelfuzz::Fail("the scanner serves as long as its client is there"); }

}  // namespace zelaudiofilterscan

namespace {

/// What can be named in requests: no plug-ins among them, so that nothing is loaded.
const std::map<std::string, std::string>& GetFiles() {
    static const std::map<std::string, std::string> files = {
        {"in-bans",
         "<bannedplugins version=\"1\"><plugin locator=\"2||/banned.so\" reason=\"crashed\"/></bannedplugins>\n"},
        {"in-unsupported", "<pluginlist version=\"4.0.0\"><plugin filename=\"in-unsupported.so\"/></pluginlist>\n"},
        {"in-text.so", "This is a text.\n"},
        {"in-cut.so",
         "\x7F"
         "ELF\x02\x01\x01"},
    };
    return files;
}

class Folder {
public:
    Folder() {
        Expect(chdir(mScratch.GetPath().c_str()) == 0, "relative names stay in the folder");
        Fill();
    }

    const zelfuzz::ScratchFolder& GetScratch() const { return mScratch; }
    void Fill() const {
        mScratch.Clear();
        for (const auto& [name, content] : GetFiles()) mScratch.Write(name, content);
    }
    /// The same name in this folder.
    std::string MoveIn(std::string path) const {
        for (char& c : path) {
            const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.';
            if (!isPlain) c = '_';
        }
        return mScratch.Path("in-" + path);
    }
    /// A text of a request, where it is a locator or a path with what it names in this folder.
    std::string MoveTextIn(const utf8string& text) const {
        const PluginLocator locator = PluginLocator::FromString(UTF8to16(text));
        if (locator == PluginLocator()) return MoveIn(std::string(text));
        const std::string path = MoveIn(std::string(UTF16to8(locator.GetPath())));
        const PluginLocator moved(locator.GetTechnologyType(), UTF8to16(path), locator.GetSubcomponent());
        return std::string(UTF16to8(moved.ToString()));
    }
    Variant MoveAllIn(const Variant& value) const {
        const auto* const text = boost::any_cast<utf8string>(value.get());
        const auto* const array = boost::any_cast<Array>(value.get());
        if (text != nullptr) return boost::make_shared<boost::any>(utf8string(MoveTextIn(*text)));
        if (array == nullptr) return value;
        Array moved;
        for (const Variant& element : *array) moved.push_back(MoveAllIn(element));
        return boost::make_shared<boost::any>(std::move(moved));
    }

private:
    zelfuzz::ScratchFolder mScratch;
};

struct Request {
    utf8string method;
    Variant id;
    std::string frame;  ///< with all that it names in the folder
};

/// Nothing for what is no request: RPC servers have a fuzzer of their own.
std::optional<Request> ReadRequest(std::string_view line, const Folder& folder) {
    Variant message;
    try {
        message = boost::make_shared<boost::any>(FromJson(line));
    } catch (const SerializationError&) {
        return {};
    }
    Request request;
    boost::int32_t id = 0;
    if (!GetInObject(message, "method", request.method) || !GetInObject(message, "id", id)) return {};
    request.id = GetVariantInObject(message, "id");
    if (const Variant parameters = GetVariantInObject(message, "params"))
        SetInObject(*message, "params", *folder.MoveAllIn(parameters));
    SetInObject(*message, "jsonrpc", utf8string("2.0"));
    request.frame = ToJson(*message);
    return request;
}

/// The end of a method's name behind what all have in front.
bool IsMethod(const Request& request, std::string_view name) {
    return request.method == utf8string("com.morva.zelaudiofilterscan.").append(name);
}

class Scan {
public:
    Scan(zelcore::threads::SimpleMainLoop& loop, zelaudiofilterscan::Watchdog& watchdog)
        : mLoop(loop), mServer(watchdog) {
        mServer.Serve(mSession);
    }

    void Deliver(const Request& request) {
        mSession->Deliver(request.frame);
        mLoop.RunPending();
        const std::vector<std::string> answers = mSession->TakeSent();
        Expect(mSession->IsOpen() && answers.size() == 1, "each request is answered, once");
        const RpcAnswer answer(answers.front());
        Expect(ToJson(*answer.id) == ToJson(*request.id), "the answer is the request's");
        if (answer.IsError()) return;
        if (IsMethod(request, "BeginScanForPlugins")) mReached = 0;
        if (IsMethod(request, "GetScanInfo")) CheckInfo(answer.value);
        if (IsMethod(request, "ScanOneEntity")) ++mReached;
    }

private:
    void CheckInfo(const Variant& info) {
        int progress = 0, total = 0;
        bool goOn = false;
        utf8string locator, text;
        Expect(GetInObject(info, "progress", progress) && GetInObject(info, "total", total),
               "a scan says how far it is");
        Expect(GetInObject(info, "continue", goOn) && GetInObject(info, "locator", locator), "and what is next");
        Expect(GetInObject(info, "subcomponent", text), "and of it, which part");
        Expect(progress >= 0 && progress <= total, "a scan is not farther than its end");
        Expect(goOn == !locator.empty(), "it goes on where there is something to scan");
        Expect(!goOn || progress == mReached + 1, "plug-ins are counted one by one");
    }

    zelcore::threads::SimpleMainLoop& mLoop;
    const boost::shared_ptr<FuzzSession> mSession = boost::make_shared<FuzzSession>();
    zelaudiofilterscan::ScanServer mServer;
    int mReached = 0;
};

/// As in a process that has just begun.
void ForgetAll(const Folder& folder) {
    const auto nothing = folder.GetScratch().GetFile("nothing"), noBans = folder.GetScratch().GetFile("no-bans");
    PluginModuleInfoManager::GetInstance().LoadConfiguration(nothing);
    BannedPluginManager::GetInstance().LoadConfiguration(nothing);
    folder.GetScratch().Write("no-bans", "<pluginlist version=\"4.0.0\"/>");
    BannedPluginManager::GetInstance().LoadStaticConfiguration(noBans);
}

/// The result of the last plug-in is one that the client can take.
void CheckResults(const Folder& folder) {
    const auto result = folder.GetScratch().GetFile("in-catalogue.scan");
    if (!result.Exists()) return;
    constexpr std::size_t kMaxResult = 1 << 20;
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    Expect(catalogue.AddConfiguration(zelcore::utility::FileUtils::ReadFileToString(result, kMaxResult), false),
           "a result is one that the client takes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const Folder folder;
    static zelcore::threads::SimpleMainLoop loop;
    static zelaudiofilterscan::Watchdog watchdog(
        {std::chrono::hours(1), std::size_t(1) << 40, std::chrono::hours(24 * 365)});
    folder.Fill();
    ForgetAll(folder);
    {
        FuzzInput input(bytes, size);
        Scan scan(loop, watchdog);
        while (!input.IsEmpty()) {
            if (const auto request = ReadRequest(input.TakeLine(), folder)) scan.Deliver(*request);
        }
    }
    CheckResults(folder);
    return 0;
}
