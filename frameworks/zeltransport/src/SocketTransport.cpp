#include <zeltransport/SocketTransport.h>

#include "Connection.h"
#include "Connector.h"
#include "IoLoop.h"
#include "Listener.h"

#include <stdexcept>
#include <thread>
#include <utility>

#include <boost/asio/ip/address.hpp>
#include <boost/make_shared.hpp>

namespace zeltransport {

using boost::asio::ip::tcp;

namespace {

void StartConnecting(const std::shared_ptr<IoLoop>& loop, const std::shared_ptr<Connection>& connection,
                     const tcp::endpoint& endpoint, const ClientOptions& options) {
    const auto connector = std::make_shared<Connector>(
        *loop, endpoint, options, [connection](tcp::socket&& socket) { connection->Adopt(std::move(socket)); },
        [connection] { connection->Close(); });
    connection->Enter([connector] { connector->Stop(); });
    if (connection->IsOpen()) connector->Start();
}

class SocketTransportImpl : public SocketTransport {
public:
    SocketTransportImpl() : mLoop(std::make_shared<IoLoop>()), mThread([loop = mLoop] { loop->Run(); }) {}
    ~SocketTransportImpl() override {
        mLoop->RequestEnd();
        if (mLoop->IsCurrentThread()) {
            mThread.detach();
        } else {
            mThread.join();
        }
    }

    boost::shared_ptr<Session> ClientStart(const std::string& host, unsigned short port) override {
        return ClientStart(host, port, ClientOptions());
    }
    boost::shared_ptr<Session> ClientStart(const std::string& host, unsigned short port,
                                           const ClientOptions& options) override;
    void ServerStart(unsigned short port, const ServerOptions& options, const AcceptHandler& onAccept,
                     const ListenFailedHandler& onFailed, const ListeningHandler& onListening) override;
    unsigned short GetListeningPort() const override {
        const std::lock_guard<std::mutex> lock(mMutex);
        return mListener ? mListener->GetPort() : static_cast<unsigned short>(0);
    }

private:
    const std::shared_ptr<IoLoop> mLoop;
    std::thread mThread;
    mutable std::mutex mMutex;
    std::shared_ptr<Listener> mListener;
};

boost::shared_ptr<Session> SocketTransportImpl::ClientStart(const std::string& host, unsigned short port,
                                                            const ClientOptions& options) {
    const auto connection = std::make_shared<Connection>(mLoop);
    boost::system::error_code error;
    const tcp::endpoint endpoint(boost::asio::ip::make_address(host, error), port);
    mLoop->Post([loop = mLoop, connection, endpoint, options, bad = static_cast<bool>(error)] {
        if (!bad) return StartConnecting(loop, connection, endpoint, options);
        connection->Enter(nullptr);
        connection->Close();
    });
    return MakeSession(connection);
}

void SocketTransportImpl::ServerStart(unsigned short port, const ServerOptions& options, const AcceptHandler& onAccept,
                                      const ListenFailedHandler& onFailed, const ListeningHandler& onListening) {
    const auto listener =
        std::make_shared<Listener>(mLoop, port, options, Listener::Handlers{onAccept, onFailed, onListening});
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (mListener) throw std::logic_error("A transport listens once");
        mListener = listener;
    }
    mLoop->Post([listener] { listener->Start(); });
}

}  // namespace

SocketTransport::~SocketTransport() = default;

boost::shared_ptr<SocketTransport> SocketTransport::Create(int threadCount) {
    if (threadCount != 1) throw std::invalid_argument("A transport has one I/O thread");
    return boost::make_shared<SocketTransportImpl>();
}

}  // namespace zeltransport
