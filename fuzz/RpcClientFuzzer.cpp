// Frames as a host gets them from its scanner, one a line; a line "send" has it make another request. Every request
// ends once, and what nobody asked for ends the session.
#include <limits>
#include <string>
#include <vector>

#include <boost/cstdint.hpp>
#include <boost/make_shared.hpp>

#include <zelcore/Serialization.h>
#include <zelmarshal/RPCClient.h>

#include "scan/ScanCalls.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"
#include "support/FuzzSession.h"

using namespace zelcore::serialization;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhostui::ScanCalls;
using zelcore::utf8string;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;
using zelfuzz::FuzzSession;
using zelmarshal::RPCClient;

namespace {

constexpr std::size_t kMaxRequests = 16;

/// The scan's own reading of a reply, which may be anything.
void CheckScanInfo(const Variant& reply) {
    const zelaudiofilterhostui::ScanInfo info = ScanCalls::ReadScanInfo(reply);
    constexpr unsigned kMost = std::numeric_limits<int>::max();
    Expect(info.progress <= kMost && info.total <= kMost, "counts are counts");
    Expect(PluginLocator::FromString(info.locator.ToString()) == info.locator, "the locator is one, or none");
    const Variant value = GetVariantInObject(reply, "value");
    const Variant goOn = GetVariantInObject(value, "continue");
    Expect(!info.goOn || (goOn && *boost::any_cast<bool>(goOn.get())), "it goes on only where that is said");
}

class Asking {
public:
    void Send() {
        if (mEnds.size() == kMaxRequests) return;
        const std::size_t number = mEnds.size();
        mEnds.push_back(0);
        const int id = mClient.SendRequest(
            number % 2 == 0 ? ScanCalls::GetScanInfo() : ScanCalls::ScanOneEntity(),
            [this, number](const Variant& reply, int replyId) {
                Expect(replyId == mIds[number], "a reply is that of its request");
                CheckScanInfo(reply);
                ++mEnds[number];
            },
            [this, number](int, const std::string&) { ++mEnds[number]; }, 0);
        mIds.push_back(id);
        Expect(mSession->TakeSent().size() == (mSession->IsOpen() ? 1 : 0), "a request is sent");
    }

    void Deliver(std::string_view line) {
        if (!mSession->IsOpen()) return;
        const bool isGood = IsGoodReply(line);
        const int before = CountEnds();
        mSession->Deliver(line);
        Expect(mSession->IsOpen() == isGood, "a good reply leaves the session open, anything else ends it");
        Expect(!isGood || CountEnds() == before + 1, "a good reply ends one request");
        Expect(mSession->TakeSent().empty(), "nothing is sent that nobody asked for");
    }

    void Finish() {
        mSession->End();
        for (const int ends : mEnds) Expect(ends == 1, "each request ends, once");
    }

private:
    int CountEnds() const {
        int count = 0;
        for (const int ends : mEnds) {
            Expect(ends <= 1, "no request ends twice");
            count += ends;
        }
        return count;
    }

    /// Found out without the client's help.
    bool IsGoodReply(std::string_view line) const {
        Variant message;
        try {
            message = boost::make_shared<boost::any>(FromJson(line));
        } catch (const SerializationError&) {
            return false;
        }
        utf8string version, text;
        int id = 0, code = 0;
        if (!GetInObject(message, "jsonrpc", version) || version != "2.0") return false;
        if (!GetInObject(message, "id", id) || !IsOutstanding(id)) return false;
        const Variant result = GetVariantInObject(message, "result");
        const Variant error = GetVariantInObject(message, "error");
        if (!result == !error) return false;
        return result ? GetVariantInObject(result, "value") != nullptr
                      : GetInObject(error, "code", code) && GetInObject(error, "message", text);
    }

    bool IsOutstanding(int id) const {
        for (std::size_t i = 0; i < mIds.size(); ++i) {
            if (mIds[i] == id && mEnds[i] == 0) return true;
        }
        return false;
    }

    const boost::shared_ptr<FuzzSession> mSession = boost::make_shared<FuzzSession>();
    RPCClient mClient{mSession, "fuzzer"};
    std::vector<int> mIds;
    std::vector<int> mEnds;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzInput input(bytes, size);
    Asking asking;
    asking.Send();
    asking.Send();
    while (!input.IsEmpty()) {
        const std::string_view line = input.TakeLine();
        if (line == "send") {
            asking.Send();
        } else {
            asking.Deliver(line);
        }
    }
    asking.Finish();
    return 0;
}
