#include "Connection.h"

#include <utility>

#include <boost/make_shared.hpp>

namespace zeltransport {

namespace {

/// What callers hold. The connection itself is also held by its loop, so its owner's letting go is noticed here.
class SessionHandle : public Session {
public:
    explicit SessionHandle(const std::shared_ptr<Connection>& connection) : mConnection(connection) {}
    ~SessionHandle() override { mConnection->Close(); }

    void Send(std::string frame) override { mConnection->Send(std::move(frame)); }
    void Close() override { mConnection->Close(); }
    bool IsOpen() const override { return mConnection->IsOpen(); }
    void SetConnectionClosedHandler(const ClosedHandler& handler) override { mConnection->SetClosedHandler(handler); }
    void SetProtocolHandlers(const MessageHandler& onMessage, const ClosedHandler& onClosed) override {
        mConnection->SetProtocolHandlers(onMessage, onClosed);
    }
    bool RunSoon(const boost::function<void()>& function) override { return mConnection->RunSoon(function); }
    void RunAfter(std::chrono::milliseconds delay, const boost::function<void()>& function) override {
        mConnection->RunAfter(delay, function);
    }

private:
    const std::shared_ptr<Connection> mConnection;
};

}  // namespace

boost::shared_ptr<Session> MakeSession(const std::shared_ptr<Connection>& connection) {
    return boost::make_shared<SessionHandle>(connection);
}

}  // namespace zeltransport
