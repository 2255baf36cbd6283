#include <zelmarshal/RPCServer.h>

#include "HandlerGate.h"
#include "Protocol.h"

#include <atomic>
#include <map>
#include <stdexcept>
#include <utility>

#include <boost/cstdint.hpp>
#include <boost/enable_shared_from_this.hpp>
#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

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

/// An id comes back in every answer, so a long one could make an answer that no frame holds.
constexpr std::size_t kMaxIdLength = 256;

bool IsId(const Variant& id) {
    const utf8string* const text = boost::any_cast<utf8string>(id.get());
    return boost::any_cast<boost::int32_t>(id.get()) || boost::any_cast<boost::int64_t>(id.get()) ||
           (text && text->size() <= kMaxIdLength);
}

}  // namespace

/// What all copies of one answer share. The session is known weakly: an answer that is kept must not keep it open.
class RPCServer::Answer::State {
public:
    /// A null `id` is a notification's, which nobody waits to hear about.
    State(const boost::shared_ptr<zeltransport::Session>& session, const Variant& id) : mSession(session), mId(id) {}
    ~State() { Fail(kErrorInternal, "The request was not answered"); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void Reply(const boost::any& value);
    void Fail(int code, const std::string& message) {
        if (IsFirst()) Send(WriteErrorReply(mId, code, message));
    }

private:
    bool IsFirst() { return !mAnswered.exchange(true) && mId; }
    void Send(std::string frame) {
        if (const auto session = mSession.lock()) session->Send(std::move(frame));
    }

    const boost::weak_ptr<zeltransport::Session> mSession;
    const Variant mId;
    std::atomic<bool> mAnswered{false};
};

void RPCServer::Answer::State::Reply(const boost::any& value) {
    if (!IsFirst()) return;
    std::string frame;
    try {
        Object result;
        result[kKeyValue] = MakeVariant(value);
        Object reply;
        reply[kKeyId] = mId;
        reply[kKeyResult] = MakeVariant(std::move(result));
        frame = WriteMessage(std::move(reply));
    } catch (const SerializationError& error) {
        frame = WriteErrorReply(mId, kErrorInternal, error.what());
    }
    Send(std::move(frame));
}

void RPCServer::Answer::Reply(const boost::any& value) const { mState->Reply(value); }

void RPCServer::Answer::Fail(int code, const std::string& message) const { mState->Fail(code, message); }

/// The server's state; the session's handlers know it weakly, so that the server's end is its end.
class RPCServer::Impl : public boost::enable_shared_from_this<Impl> {
public:
    void RegisterMethod(const std::string& name, const Method& method) { mMethods[name] = method; }
    void Serve(const boost::shared_ptr<zeltransport::Session>& session, const boost::function<void()>& onClosed);
    void End() { mGate.ShutAndWait(); }

private:
    void OnFrame(const char* bytes, std::size_t size);
    void OnClosed();
    void OnRequest(const Variant& request);
    void CallMethod(const std::string& name, const Variant& parameters, const Answer& answer) const;
    void Refuse(const Variant& id, int code, const char* message) const;

    std::map<std::string, Method> mMethods;
    boost::shared_ptr<zeltransport::Session> mSession;
    boost::function<void()> mOnClosed;
    HandlerGate mGate;
};

void RPCServer::Impl::Serve(const boost::shared_ptr<zeltransport::Session>& session,
                            const boost::function<void()>& onClosed) {
    if (mSession) throw std::logic_error("A server serves one session");
    mSession = session;
    mOnClosed = onClosed;
    const boost::weak_ptr<Impl> weak = weak_from_this();
    session->SetProtocolHandlers(
        [weak](const char* bytes, std::size_t size) {
            if (const auto self = weak.lock()) self->OnFrame(bytes, size);
        },
        [weak] {
            if (const auto self = weak.lock()) self->OnClosed();
        });
}

void RPCServer::Impl::OnClosed() {
    const HandlerGate::Pass pass(mGate);
    if (!pass) return;
    const boost::function<void()> onClosed = std::exchange(mOnClosed, {});
    if (onClosed) onClosed();
}

void RPCServer::Impl::OnFrame(const char* bytes, std::size_t size) {
    const HandlerGate::Pass pass(mGate);
    if (!pass) return;
    Variant request;
    try {
        request = ReadMessage(bytes, size);
    } catch (const SerializationError& error) {
        Refuse(Variant(), kErrorParse, error.what());
        return mSession->Close();
    }
    OnRequest(request);
}

void RPCServer::Impl::OnRequest(const Variant& request) {
    const Variant id = GetVariantInObject(request, kKeyId);
    const Variant knownId = id && IsId(id) ? id : Variant();
    utf8string method;
    if (!IsOfThisVersion(request) || (id && !knownId) || !GetInObject(request, kKeyMethod, method)) {
        return Refuse(knownId, kErrorInvalidRequest, "This is not a request");
    }
    Answer answer;
    answer.mState = boost::make_shared<Answer::State>(mSession, knownId);
    CallMethod(std::string(method.begin(), method.end()), GetVariantInObject(request, kKeyParams), answer);
}

void RPCServer::Impl::CallMethod(const std::string& name, const Variant& parameters, const Answer& answer) const {
    const auto method = mMethods.find(name);
    if (method == mMethods.end()) return answer.Fail(kErrorMethodNotFound, "There is no such method: " + name);
    const Array none;
    const Array* array = parameters ? boost::any_cast<Array>(parameters.get()) : &none;
    if (!array) return answer.Fail(kErrorInvalidParams, "The parameters must be an array");
    try {
        method->second(*array, answer);
    } catch (const RPCError& error) {
        answer.Fail(error.GetCode(), error.what());
    } catch (const std::exception& error) {
        answer.Fail(kErrorInternal, error.what());
    } catch (...) {
        answer.Fail(kErrorInternal, "The method failed");
    }
}

void RPCServer::Impl::Refuse(const Variant& id, int code, const char* message) const {
    mSession->Send(WriteErrorReply(id, code, message));
}

RPCServer::RPCServer() : mImpl(boost::make_shared<Impl>()) {}

RPCServer::~RPCServer() { mImpl->End(); }

void RPCServer::RegisterMethod(const std::string& name, const Method& method) { mImpl->RegisterMethod(name, method); }

void RPCServer::Serve(const boost::shared_ptr<zeltransport::Session>& session,
                      const boost::function<void()>& onClosed) {
    mImpl->Serve(session, onClosed);
}

}  // namespace zelmarshal
