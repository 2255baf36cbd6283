#include "RawSocket.h"

#include <cerrno>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zeltests {

namespace {

sockaddr_in MakeAddress(unsigned short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

RawSocket MakeSocket() {
    RawSocket socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    EXPECT_GE(socket.Get(), 0);
    // A peer that never answers must fail a test, not hang it.
    const timeval limit = {20, 0};
    EXPECT_EQ(0, ::setsockopt(socket.Get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit));
    return socket;
}

template <typename Function>
unsigned short AskForPort(int descriptor, Function function) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    EXPECT_EQ(0, function(descriptor, reinterpret_cast<sockaddr*>(&address), &size));
    return ntohs(address.sin_port);
}

}  // namespace

RawSocket RawSocket::Connect(unsigned short port) {
    RawSocket socket = MakeSocket();
    const sockaddr_in address = MakeAddress(port);
    EXPECT_EQ(0, ::connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
    return socket;
}

RawSocket RawSocket::Listen(unsigned short port) {
    RawSocket socket = MakeSocket();
    const int on = 1;
    EXPECT_EQ(0, ::setsockopt(socket.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on));
    const sockaddr_in address = MakeAddress(port);
    EXPECT_EQ(0, ::bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
    EXPECT_EQ(0, ::listen(socket.Get(), 16));
    return socket;
}

RawSocket RawSocket::Accept() const {
    RawSocket accepted(::accept4(mDescriptor, nullptr, nullptr, SOCK_CLOEXEC));
    EXPECT_GE(accepted.Get(), 0);
    return accepted;
}

unsigned short RawSocket::GetPort() const { return AskForPort(mDescriptor, ::getsockname); }

unsigned short RawSocket::GetPeerPort() const { return AskForPort(mDescriptor, ::getpeername); }

void RawSocket::Send(const std::string& bytes) const {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t size = ::send(mDescriptor, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        ASSERT_GT(size, 0);
        sent += static_cast<std::size_t>(size);
    }
}

std::size_t RawSocket::SendSome(std::string_view bytes) const {
    const ssize_t size = ::send(mDescriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    EXPECT_TRUE(size > 0 || errno == EAGAIN) << errno;
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

std::string RawSocket::ReceiveAll() const {
    std::string all;
    char chunk[4096];
    ssize_t size = 0;
    while ((size = ::recv(mDescriptor, chunk, sizeof chunk, 0)) > 0) all.append(chunk, static_cast<std::size_t>(size));
    EXPECT_TRUE(size == 0 || errno == ECONNRESET) << "the peer did not close: " << errno;
    return all;
}

std::string RawSocket::Receive(std::size_t size) const {
    std::string bytes(size, '\0');
    const ssize_t received = ::recv(mDescriptor, bytes.data(), size, MSG_WAITALL);
    EXPECT_EQ(static_cast<ssize_t>(size), received);
    return bytes;
}

void RawSocket::Close() {
    if (mDescriptor >= 0) ::close(Release());
}

}  // namespace zeltests
