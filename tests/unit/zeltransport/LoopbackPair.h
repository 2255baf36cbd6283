#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include <gtest/gtest.h>
#include <zeltransport/SocketTransport.h>

#include "support/WaitFor.h"

namespace zeltests {

/// A transport that listens on a free port and keeps the session it accepted last.
class Acceptor {
public:
    explicit Acceptor(const zeltransport::ServerOptions& options = zeltransport::ServerOptions(),
                      unsigned short port = 0)
        : mTransport(zeltransport::SocketTransport::Create(1)) {
        const std::shared_ptr<State> state = mState;
        mTransport->ServerStart(
            port, options,
            [state](boost::shared_ptr<zeltransport::Session> session) {
                const std::lock_guard<std::mutex> lock(state->mutex);
                state->session.swap(session);
                ++state->accepted;
            },
            [state](const std::string&) { state->failed = true; }, {});
        EXPECT_TRUE(WaitFor([&] { return mTransport->GetListeningPort() != 0 || state->failed; }));
        EXPECT_FALSE(state->failed);
        mPort = mTransport->GetListeningPort();
    }

    unsigned short GetPort() const { return mPort; }
    int GetAccepted() const {
        const std::lock_guard<std::mutex> lock(mState->mutex);
        return mState->accepted;
    }
    /// The session accepted last, which the caller then holds alone.
    boost::shared_ptr<zeltransport::Session> WaitForSession() {
        boost::shared_ptr<zeltransport::Session> session;
        EXPECT_TRUE(WaitFor([&] {
            const std::lock_guard<std::mutex> lock(mState->mutex);
            session.swap(mState->session);
            return session != nullptr;
        }));
        return session;
    }
    boost::shared_ptr<zeltransport::SocketTransport> mTransport;

private:
    struct State {
        std::mutex mutex;
        boost::shared_ptr<zeltransport::Session> session;
        int accepted = 0;
        std::atomic<bool> failed{false};
    };
    const std::shared_ptr<State> mState = std::make_shared<State>();
    unsigned short mPort = 0;
};

/// Two sessions that are connected with each other, each on a transport of its own.
struct LoopbackPair {
    LoopbackPair() {
        zeltransport::ServerOptions options;
        Acceptor acceptor(options);
        clientTransport = zeltransport::SocketTransport::Create(1);
        client = clientTransport->ClientStart("127.0.0.1", acceptor.GetPort());
        server = acceptor.WaitForSession();
        serverTransport = acceptor.mTransport;
    }

    boost::shared_ptr<zeltransport::SocketTransport> serverTransport;
    boost::shared_ptr<zeltransport::SocketTransport> clientTransport;
    boost::shared_ptr<zeltransport::Session> server;
    boost::shared_ptr<zeltransport::Session> client;
};

}  // namespace zeltests
