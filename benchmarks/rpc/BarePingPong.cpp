#include "BarePingPong.h"

#include <array>
#include <future>
#include <thread>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

namespace zelbench {

using boost::asio::ip::tcp;
using boost::system::error_code;

namespace {

/// One side: writes its own text whenever the other's has come, as often as it was told to.
class Side {
public:
    Side(boost::asio::io_context& context, const std::string& out, std::size_t inSize)
        : mSocket(context), mOut(out), mIn(inSize, '\0') {}

    void Answer() {
        boost::asio::async_read(mSocket, boost::asio::buffer(mIn), [this](const error_code& error, std::size_t) {
            if (!error) Write([this] { Answer(); });
        });
    }
    void Ask(int count, std::promise<void>& done) {
        if (count == 0) return done.set_value();
        Write([this, count, &done] {
            boost::asio::async_read(
                mSocket, boost::asio::buffer(mIn),
                [this, count, &done](const error_code& error, std::size_t) { Ask(error ? 0 : count - 1, done); });
        });
    }
    tcp::socket mSocket;

private:
    template <typename Next>
    void Write(Next next) {
        boost::asio::async_write(mSocket, boost::asio::buffer(mOut), [next](const error_code& error, std::size_t) {
            if (!error) next();
        });
    }

    const std::string mOut;
    std::string mIn;
};

}  // namespace

class BarePingPong::Impl {
public:
    Impl(const std::string& ping, const std::string& pong)
        : mClient(mClientContext, ping, pong.size()), mServer(mServerContext, pong, ping.size()) {
        tcp::acceptor acceptor(mServerContext, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0));
        mClient.mSocket.connect(acceptor.local_endpoint());
        acceptor.accept(mServer.mSocket);
        mClient.mSocket.set_option(tcp::no_delay(true));
        mServer.mSocket.set_option(tcp::no_delay(true));
        mServer.Answer();
        mClientThread = std::thread([this] { mClientContext.run(); });
        mServerThread = std::thread([this] { mServerContext.run(); });
    }
    ~Impl() {
        mClientContext.stop();
        mServerContext.stop();
        mClientThread.join();
        mServerThread.join();
    }
    void Run(int count) {
        std::promise<void> done;
        boost::asio::post(mClientContext, [&] { mClient.Ask(count, done); });
        done.get_future().wait();
    }

private:
    boost::asio::io_context mClientContext{1};
    boost::asio::io_context mServerContext{1};
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> mWork{mClientContext.get_executor()};
    Side mClient;
    Side mServer;
    std::thread mClientThread;
    std::thread mServerThread;
};

BarePingPong::BarePingPong(const std::string& ping, const std::string& pong)
    : mImpl(std::make_unique<Impl>(ping, pong)) {}

BarePingPong::~BarePingPong() = default;

void BarePingPong::Run(int count) { mImpl->Run(count); }

}  // namespace zelbench
