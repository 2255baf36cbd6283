#include <zelmarshal/RPCClient.h>

#include "HandlerGate.h"
#include "PendingRequests.h"
#include "Protocol.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <boost/cstdint.hpp>
#include <boost/enable_shared_from_this.hpp>
#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

#include <zelcore/Serialization.h>
#include <zeltransport/Session.h>

namespace zelmarshal {

using zelcore::utf8string;
using zelcore::serialization::Array;
using zelcore::serialization::GetInObject;
using zelcore::serialization::GetVariantInObject;
using zelcore::serialization::Object;
using zelcore::serialization::SerializationError;
using zelcore::serialization::Variant;

namespace {

/// For requests that end together: what one handler throws must not keep the others from hearing of it.
void CallError(const PendingRequests::Request& request, int code, const char* message) {
    try {
        if (request.onError) request.onError(code, message);
    } catch (...) {
    }
}

}  // namespace

/// The client's state; the session's handlers know it weakly, so that the client's end is its end.
class RPCClient::Impl : public boost::enable_shared_from_this<Impl> {
public:
    Impl(const boost::shared_ptr<zeltransport::Session>& session, const std::string& clientName)
        : mSession(session), mClientName(MakeText(clientName)) {}

    void Attach();
    int SendRequest(const Variant& request, const ReplyHandler& onReply, const ErrorHandler& onError, int timeout);
    void End();

private:
    typedef PendingRequests::TimePoint TimePoint;

    std::string WriteRequest(const Variant& request, int id) const;
    void OnFrame(const char* bytes, std::size_t size);
    void OnReply(const Variant& message, int id, PendingRequests::Request& request);
    void FailAll();
    void FailOne(int id);
    void RunTimerUntil(TimePoint time);
    void OnTimer();

    const boost::shared_ptr<zeltransport::Session> mSession;
    const Variant mClientName;
    HandlerGate mGate;
    PendingRequests mPending;
};

void RPCClient::Impl::Attach() {
    const boost::weak_ptr<Impl> weak = weak_from_this();
    mSession->SetProtocolHandlers(
        [weak](const char* bytes, std::size_t size) {
            if (const auto self = weak.lock()) self->OnFrame(bytes, size);
        },
        [weak] {
            if (const auto self = weak.lock()) self->FailAll();
        });
}

int RPCClient::Impl::SendRequest(const Variant& request, const ReplyHandler& onReply, const ErrorHandler& onError,
                                 int timeout) {
    const int id = mPending.NewId();
    std::string frame = WriteRequest(request, id);
    mPending.Add(id, {onReply, onError});
    if (timeout > 0) {
        const TimePoint deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout);
        if (mPending.SetDeadline(id, deadline)) RunTimerUntil(deadline);
    }
    mSession->Send(std::move(frame));
    if (mSession->IsOpen()) return id;
    // The session's end may have been dealt with before this request was there.
    const boost::weak_ptr<Impl> weak = weak_from_this();
    const bool posted = mSession->RunSoon([weak] {
        if (const auto self = weak.lock()) self->FailAll();
    });
    if (!posted) FailOne(id);
    return id;
}

std::string RPCClient::Impl::WriteRequest(const Variant& request, int id) const {
    const Object* call = request ? boost::any_cast<Object>(request.get()) : nullptr;
    utf8string method;
    if (!call || !GetInObject(request, kKeyMethod, method)) throw SerializationError("A request must name a method");
    const Variant parameters = GetVariantInObject(request, kKeyParams);
    if (parameters && !boost::any_cast<Array>(parameters.get())) {
        throw SerializationError("The parameters of a request must be an array");
    }
    Object message = *call;
    message[kKeyId] = MakeVariant(boost::int32_t(id));
    message[kKeyClient] = mClientName;
    return WriteMessage(std::move(message));
}

void RPCClient::Impl::OnFrame(const char* bytes, std::size_t size) {
    const HandlerGate::Pass pass(mGate);
    if (!pass) return;
    Variant message;
    try {
        message = ReadMessage(bytes, size);
    } catch (const SerializationError&) {
        return mSession->Close();
    }
    int id = 0;
    if (!IsOfThisVersion(message) || !GetInObject(message, kKeyId, id)) return mSession->Close();
    PendingRequests::Request request;
    switch (mPending.Take(id, request)) {
        case PendingRequests::Found::kOutstanding:
            return OnReply(message, id, request);
        case PendingRequests::Found::kTimedOut:
            return;
        case PendingRequests::Found::kUnknown:
            return mSession->Close();
    }
}

void RPCClient::Impl::OnReply(const Variant& message, int id, PendingRequests::Request& request) {
    const Variant result = GetVariantInObject(message, kKeyResult);
    const Variant error = GetVariantInObject(message, kKeyError);
    int code = 0;
    utf8string text;
    if (result && !error && GetVariantInObject(result, kKeyValue)) {
        if (request.onReply) request.onReply(result, id);
    } else if (error && !result && GetInObject(error, kKeyCode, code) && GetInObject(error, kKeyMessage, text)) {
        if (request.onError) request.onError(code, std::string(text.begin(), text.end()));
    } else {
        mSession->Close();
        CallError(request, kErrorBadReply, "The reply could not be understood");
    }
}

void RPCClient::Impl::FailAll() {
    const HandlerGate::Pass pass(mGate);
    if (!pass) return;
    // A handler may send anew, which must not keep this going for ever, or let go of the client.
    for (const int id : mPending.GetOutstanding()) {
        if (mGate.IsShut()) return;
        FailOne(id);
    }
}

void RPCClient::Impl::FailOne(int id) {
    PendingRequests::Request request;
    if (mPending.Take(id, request) != PendingRequests::Found::kOutstanding) return;
    CallError(request, kErrorConnectionLost, "The connection was lost");
}

void RPCClient::Impl::RunTimerUntil(TimePoint time) {
    const auto delay = std::chrono::ceil<std::chrono::milliseconds>(time - std::chrono::steady_clock::now());
    const boost::weak_ptr<Impl> weak = weak_from_this();
    mSession->RunAfter(std::max(delay, std::chrono::milliseconds(0)), [weak] {
        if (const auto self = weak.lock()) self->OnTimer();
    });
}

void RPCClient::Impl::OnTimer() {
    const HandlerGate::Pass pass(mGate);
    if (!pass) return;
    PendingRequests::Request request;
    const TimePoint now = std::chrono::steady_clock::now();
    TimePoint next;
    if (mPending.StartTimerRound(now, next)) RunTimerUntil(next);
    while (!mGate.IsShut() && mPending.TakeTimedOut(now, request)) {
        CallError(request, kErrorTimeout, "No reply came in time");
    }
}

void RPCClient::Impl::End() {
    mGate.ShutAndWait();
    mPending.Clear();
}

RPCClient::RPCClient(const boost::shared_ptr<zeltransport::Session>& session, const std::string& clientName)
    : mImpl(boost::make_shared<Impl>(session, clientName)) {
    mImpl->Attach();
}

RPCClient::~RPCClient() { mImpl->End(); }

int RPCClient::SendRequest(const Variant& request, const ReplyHandler& onReply, const ErrorHandler& onError,
                           int timeoutMilliseconds) {
    // A handler that runs inside may let go of the client.
    const boost::shared_ptr<Impl> impl = mImpl;
    return impl->SendRequest(request, onReply, onError, timeoutMilliseconds);
}

}  // namespace zelmarshal
