#include "RawSocket.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <gtest/gtest.h>

namespace zeltests {

namespace {

/// Handles have 32 bits that matter.
SOCKET ToSocket(int descriptor) { return static_cast<SOCKET>(descriptor); }

sockaddr_in MakeAddress(unsigned short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

RawSocket MakeSocket() {
    static const bool sStarted = [] {
        WSADATA data;
        return WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }();
    EXPECT_TRUE(sStarted);
    RawSocket socket(static_cast<int>(
        WSASocketW(AF_INET, SOCK_STREAM, 0, nullptr, 0, WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)));
    EXPECT_GE(socket.Get(), 0);
    // A peer that never answers must fail a test, not hang it.
    const DWORD limit = 20000;
    EXPECT_EQ(0, setsockopt(ToSocket(socket.Get()), SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&limit),
                            sizeof limit));
    return socket;
}

template <typename Function>
unsigned short AskForPort(int descriptor, Function function) {
    sockaddr_in address{};
    int size = sizeof address;
    EXPECT_EQ(0, function(ToSocket(descriptor), reinterpret_cast<sockaddr*>(&address), &size));
    return ntohs(address.sin_port);
}

}  // namespace

RawSocket RawSocket::Connect(unsigned short port) {
    RawSocket socket = MakeSocket();
    const sockaddr_in address = MakeAddress(port);
    EXPECT_EQ(0, connect(ToSocket(socket.Get()), reinterpret_cast<const sockaddr*>(&address), sizeof address))
        << WSAGetLastError();
    return socket;
}

RawSocket RawSocket::Listen(unsigned short port) {
    RawSocket socket = MakeSocket();
    const sockaddr_in address = MakeAddress(port);
    EXPECT_EQ(0, bind(ToSocket(socket.Get()), reinterpret_cast<const sockaddr*>(&address), sizeof address))
        << WSAGetLastError();
    EXPECT_EQ(0, listen(ToSocket(socket.Get()), 16));
    return socket;
}

RawSocket RawSocket::Accept() const {
    RawSocket accepted(static_cast<int>(accept(ToSocket(mDescriptor), nullptr, nullptr)));
    EXPECT_GE(accepted.Get(), 0);
    SetHandleInformation(reinterpret_cast<HANDLE>(ToSocket(accepted.Get())), HANDLE_FLAG_INHERIT, 0);
    return accepted;
}

unsigned short RawSocket::GetPort() const { return AskForPort(mDescriptor, getsockname); }

unsigned short RawSocket::GetPeerPort() const { return AskForPort(mDescriptor, getpeername); }

void RawSocket::Send(const std::string& bytes) const {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const int size = send(ToSocket(mDescriptor), bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
        ASSERT_GT(size, 0) << WSAGetLastError();
        sent += static_cast<std::size_t>(size);
    }
}

std::size_t RawSocket::SendSome(std::string_view bytes) const {
    u_long waits = 1;
    EXPECT_EQ(0, ioctlsocket(ToSocket(mDescriptor), static_cast<long>(FIONBIO), &waits));
    const int size = send(ToSocket(mDescriptor), bytes.data(), static_cast<int>(bytes.size()), 0);
    EXPECT_TRUE(size > 0 || WSAGetLastError() == WSAEWOULDBLOCK) << WSAGetLastError();
    waits = 0;
    EXPECT_EQ(0, ioctlsocket(ToSocket(mDescriptor), static_cast<long>(FIONBIO), &waits));
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

std::string RawSocket::ReceiveAll() const {
    std::string all;
    char chunk[4096];
    int size = 0;
    while ((size = recv(ToSocket(mDescriptor), chunk, sizeof chunk, 0)) > 0)
        all.append(chunk, static_cast<std::size_t>(size));
    const int error = WSAGetLastError();
    EXPECT_TRUE(size == 0 || error == WSAECONNRESET || error == WSAECONNABORTED) << "the peer did not close: " << error;
    return all;
}

std::string RawSocket::Receive(std::size_t size) const {
    std::string bytes(size, '\0');
    const int received = recv(ToSocket(mDescriptor), bytes.data(), static_cast<int>(size), MSG_WAITALL);
    EXPECT_EQ(static_cast<int>(size), received);
    return bytes;
}

void RawSocket::Close() {
    if (mDescriptor >= 0) closesocket(ToSocket(Release()));
}

}  // namespace zeltests
