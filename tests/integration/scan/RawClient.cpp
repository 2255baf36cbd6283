#include "RawClient.h"

#include <chrono>

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/ScanProtocol.h>

#include "support/WaitFor.h"

namespace zeltests {

using boost::asio::ip::tcp;

struct RawClient::Socket {
    boost::asio::io_context context;
    tcp::socket socket{context};
};

RawClient::RawClient() : mSocket(std::make_unique<Socket>()) {}

RawClient::~RawClient() = default;

bool RawClient::Connect() {
    return WaitFor([this] { return TryConnect(); }, std::chrono::seconds(10));
}

bool RawClient::TryConnect() {
    Close();
    boost::system::error_code error;
    mSocket->socket.connect(
        tcp::endpoint(boost::asio::ip::address_v4::loopback(), zelaudiofilterhost::scanprotocol::kScannerPort), error);
    if (error) Close();
    return !error;
}

void RawClient::Close() {
    boost::system::error_code ignored;
    mSocket->socket.close(ignored);
}

void RawClient::SendBytes(const std::string& bytes) {
    boost::system::error_code error;
    EXPECT_EQ(bytes.size(), boost::asio::write(mSocket->socket, boost::asio::buffer(bytes), error));
}

std::string RawClient::MakeHead(std::size_t size) {
    std::string head;
    for (int shift = 0; shift < 32; shift += 8) head += static_cast<char>((size >> shift) & 0xFF);
    return head;
}

std::string RawClient::Receive() {
    std::string head;
    if (!ReceiveExactly(4, head)) return std::string();
    std::size_t size = 0;
    for (int i = 3; i >= 0; --i) size = size << 8 | static_cast<unsigned char>(head[static_cast<std::size_t>(i)]);
    std::string body;
    return ReceiveExactly(size, body) ? body : std::string();
}

std::string RawClient::Call(const std::string& method, const std::string& parameters) {
    SendFrame("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"com.morva.zelaudiofilterscan." + method +
              "\",\"params\":" + parameters + "}");
    return Receive();
}

bool RawClient::ReceiveExactly(std::size_t size, std::string& bytes) {
    bytes.assign(size, '\0');
    boost::system::error_code error;
    return boost::asio::read(mSocket->socket, boost::asio::buffer(bytes), error) == size;
}

}  // namespace zeltests
