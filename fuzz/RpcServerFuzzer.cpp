// Frames as the scanner gets them, one a line. Every request is answered once, and no notification is.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/cstdint.hpp>
#include <boost/make_shared.hpp>

#include <zelcore/Serialization.h>
#include <zelmarshal/RPCServer.h>

#include "support/Expect.h"
#include "support/FuzzInput.h"
#include "support/FuzzSession.h"
#include "support/RpcAnswer.h"

using namespace zelcore::serialization;
using zelcore::utf8string;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;
using zelfuzz::FuzzSession;
using zelfuzz::RpcAnswer;
using zelmarshal::RPCServer;

namespace {

constexpr std::size_t kMaxIdLength = 256;

std::string Write(const Variant& value) { return value ? ToJson(*value) : "nothing"; }

/// What a frame is, found out without the server's help.
struct Frame {
    explicit Frame(std::string_view text) {
        try {
            message = boost::make_shared<boost::any>(FromJson(text));
        } catch (const SerializationError&) {
            return;
        }
        utf8string version;
        const Variant anyId = GetVariantInObject(message, "id");
        if (anyId && IsId(*anyId)) id = anyId;
        isRequest = GetInObject(message, "jsonrpc", version) && version == "2.0" && (!anyId || id) &&
                    GetInObject(message, "method", method);
        parameters = GetVariantInObject(message, "params");
        isCall = isRequest && (!parameters || boost::any_cast<Array>(parameters.get()));
    }
    static bool IsId(const boost::any& value) {
        const utf8string* const text = boost::any_cast<utf8string>(&value);
        return value.type() == typeid(boost::int32_t) || value.type() == typeid(boost::int64_t) ||
               (text != nullptr && text->size() <= kMaxIdLength);
    }
    bool IsNotification() const { return isRequest && !id; }
    bool Calls(const char* name) const { return isCall && method == name; }

    Variant message;  ///< null for what is no JSON
    Variant id;       ///< null where there is none that can be answered
    Variant parameters;
    utf8string method;
    bool isRequest = false;
    bool isCall = false;
};

class Serving {
public:
    Serving() {
        mServer.RegisterMethod(
            "echo", [](const Array& parameters, const RPCServer::Answer& answer) { answer.Reply(parameters); });
        mServer.RegisterMethod("refuse", [](const Array&, const RPCServer::Answer&) {
            throw zelmarshal::RPCError(zelmarshal::kErrorInvalidParams, std::string("not \x80 this"));
        });
        mServer.RegisterMethod("break", [](const Array&, const RPCServer::Answer&) { throw std::runtime_error(""); });
        mServer.RegisterMethod("odd", [](const Array&, const RPCServer::Answer& answer) { answer.Reply(MakeOdd()); });
        mServer.RegisterMethod("drop", [](const Array&, const RPCServer::Answer&) {});
        mServer.RegisterMethod("late",
                               [this](const Array&, const RPCServer::Answer& answer) { mLate.push_back(answer); });
        mServer.Serve(mSession, [this] { ++mClosedCount; });
    }

    void Deliver(std::string_view line) {
        if (!mSession->IsOpen()) return;
        const Frame frame(line);
        const std::size_t lateBefore = mLate.size();
        mSession->Deliver(line);
        const std::vector<std::string> answers = mSession->TakeSent();
        const bool isLate = frame.Calls("late");
        Expect(mLate.size() == lateBefore + (isLate ? 1 : 0),
               "a method is called for a request that names it, and once");
        if (isLate && frame.id) mLateIds.push_back(Write(frame.id));
        Expect(mSession->IsOpen() == (frame.message != nullptr),
               "what is no JSON closes the session, nothing else does");
        const bool isAnswered = !frame.IsNotification() && !isLate;
        Expect(answers.size() == (isAnswered ? 1 : 0), "a request is answered, once; a notification never");
        if (!isAnswered) return;
        const RpcAnswer given(answers.front());
        Expect(Write(given.id) == (frame.id ? Write(frame.id) : "null"), "the answer is the request's");
        if (!frame.Calls("echo") || IsTooDeep(frame, given)) return;
        Expect(Write(given.value) == (frame.parameters ? Write(frame.parameters) : "[]"),
               "parameters come back as they were");
    }

    void Finish(bool lateAnswersComeFirst) {
        const bool isOpen = mSession->IsOpen();
        if (!lateAnswersComeFirst) mSession->End();
        for (; !mLate.empty(); mLate.pop_back()) {
            mLate.back().Reply(true);
            mLate.back().Fail(1, "too late");
        }
        std::vector<std::string> ids;
        for (const std::string& answer : mSession->TakeSent()) ids.push_back(Write(RpcAnswer(answer).id));
        std::reverse(ids.begin(), ids.end());
        if (!isOpen || !lateAnswersComeFirst) mLateIds.clear();
        Expect(ids == mLateIds, "late answers go once, while the session is open");
        mSession->End();
        Expect(mClosedCount == 1, "the end is told once");
    }

private:
    struct Odd {};
    static boost::any MakeOdd() { return Odd(); }

    /// An answer holds a value one level deeper than a request does.
    static bool IsTooDeep(const Frame& frame, const RpcAnswer& given) {
        const std::string text = Write(frame.parameters);
        const auto brackets = std::count_if(text.begin(), text.end(), [](char c) { return c == '[' || c == '{'; });
        return brackets >= kMaxDepth - 2 && given.IsError() && given.code == zelmarshal::kErrorInternal;
    }

    const boost::shared_ptr<FuzzSession> mSession = boost::make_shared<FuzzSession>();
    RPCServer mServer;
    std::vector<RPCServer::Answer> mLate;
    std::vector<std::string> mLateIds;
    int mClosedCount = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzInput input(bytes, size);
    Serving serving;
    while (!input.IsEmpty()) serving.Deliver(input.TakeLine());
    serving.Finish(size % 2 == 0);
    return 0;
}
