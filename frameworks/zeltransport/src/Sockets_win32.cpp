#include "Sockets.h"

#include <memory>
#include <utility>

#include <boost/asio/windows/overlapped_ptr.hpp>
#include <mswsock.h>
#include <windows.h>

namespace zeltransport {

using boost::asio::ip::tcp;
using boost::system::error_code;

namespace {

// The flag must come with the call that makes the socket: set afterwards, another thread may start a process in
// between.
SOCKET MakeSocket(const tcp& protocol) {
    return ::WSASocketW(protocol.family(), protocol.type(), protocol.protocol(), nullptr, 0,
                        WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
}

template <typename Socket>
void Assign(Socket& socket, const tcp& protocol, SOCKET handle, error_code& error) {
    if (handle == INVALID_SOCKET) {
        error.assign(::WSAGetLastError(), boost::system::system_category());
        return;
    }
    socket.assign(protocol, handle, error);
    if (error) ::closesocket(handle);
}

/// A socket that waits for a connection to come into it, and what the system writes meanwhile.
struct Accepting {
    static constexpr DWORD kAddressSize = sizeof(sockaddr_storage) + 16;

    explicit Accepting(SOCKET handle) : socket(handle) {}
    ~Accepting() {
        if (socket != INVALID_SOCKET) ::closesocket(socket);
    }
    Accepting(const Accepting&) = delete;
    Accepting& operator=(const Accepting&) = delete;

    void MoveTo(tcp::socket& target, SOCKET listener, error_code& error) {
        // Until then it has no addresses.
        ::setsockopt(socket, SOL_SOCKET, SO_UPDATE_ACCEPT_CONTEXT, reinterpret_cast<const char*>(&listener),
                     sizeof listener);
        Assign(target, tcp::v4(), std::exchange(socket, INVALID_SOCKET), error);
    }

    SOCKET socket;
    char addresses[2 * kAddressSize];
};

}  // namespace

void OpenSocket(tcp::socket& socket, const tcp& protocol, error_code& error) {
    Assign(socket, protocol, MakeSocket(protocol), error);
}

void OpenListener(tcp::acceptor& acceptor, const tcp::endpoint& endpoint, error_code& error) {
    Assign(acceptor, endpoint.protocol(), MakeSocket(endpoint.protocol()), error);
    // Address reuse means something else here: it would let another process take the port over.
    typedef boost::asio::detail::socket_option::boolean<SOL_SOCKET, SO_EXCLUSIVEADDRUSE> ExclusiveAddress;
    if (!error) acceptor.set_option(ExclusiveAddress(true), error);
    if (!error) acceptor.bind(endpoint, error);
    if (!error) acceptor.listen(tcp::acceptor::max_listen_connections, error);
    error_code ignored;
    if (error) acceptor.close(ignored);
}

void AcceptSocket(tcp::acceptor& acceptor, tcp::socket& socket, const AcceptHandler& onAccepted) {
    // Completion ports have no way to wait for a connection but to accept it, into a socket that is there already.
    const auto accepting = std::make_shared<Accepting>(MakeSocket(tcp::v4()));
    const SOCKET listener = acceptor.native_handle();
    boost::asio::windows::overlapped_ptr overlapped(
        acceptor.get_executor(), [accepting, &socket, listener, onAccepted](const error_code& completed, std::size_t) {
            error_code error = completed;
            if (!error) accepting->MoveTo(socket, listener, error);
            onAccepted(error);
        });
    DWORD received = 0;
    const BOOL done = ::AcceptEx(listener, accepting->socket, accepting->addresses, 0, Accepting::kAddressSize,
                                 Accepting::kAddressSize, &received, overlapped.get());
    const DWORD code = done ? NO_ERROR : ::GetLastError();
    if (done || code == ERROR_IO_PENDING) {
        overlapped.release();
    } else {
        overlapped.complete(error_code(static_cast<int>(code), boost::system::system_category()), 0);
    }
}

}  // namespace zeltransport
