#include "Sockets.h"

#include <cerrno>

#include <sys/socket.h>
#include <unistd.h>

namespace zeltransport {

using boost::asio::ip::tcp;
using boost::system::error_code;

namespace {

// The flag must come with the call that makes the socket: set afterwards, a fork of another thread may slip in between.
int MakeSocket(const tcp& protocol) {
    return ::socket(protocol.family(), protocol.type() | SOCK_CLOEXEC, protocol.protocol());
}

template <typename Socket>
void Assign(Socket& socket, const tcp& protocol, int descriptor, error_code& error) {
    if (descriptor < 0) {
        error.assign(errno, boost::system::system_category());
        return;
    }
    socket.assign(protocol, descriptor, error);
    if (error) ::close(descriptor);
}

}  // namespace

void OpenSocket(tcp::socket& socket, const tcp& protocol, error_code& error) {
    Assign(socket, protocol, MakeSocket(protocol), error);
}

void OpenListener(tcp::acceptor& acceptor, const tcp::endpoint& endpoint, error_code& error) {
    Assign(acceptor, endpoint.protocol(), MakeSocket(endpoint.protocol()), error);
    if (!error) acceptor.set_option(tcp::acceptor::reuse_address(true), error);
    if (!error) acceptor.bind(endpoint, error);
    // Two sockets that both allow reuse may be bound to one port; only listening tells that somebody else has it.
    if (!error) acceptor.listen(tcp::acceptor::max_listen_connections, error);
    if (!error) acceptor.non_blocking(true, error);
    error_code ignored;
    if (error) acceptor.close(ignored);
}

void AcceptSocket(tcp::acceptor& acceptor, tcp::socket& socket, const AcceptHandler& onAccepted) {
    acceptor.async_wait(tcp::acceptor::wait_read, [&acceptor, &socket, onAccepted](const error_code& waitError) {
        error_code error = waitError;
        if (!error && !acceptor.is_open()) error = boost::asio::error::operation_aborted;
        if (!error) {
            const int descriptor = ::accept4(acceptor.native_handle(), nullptr, nullptr, SOCK_CLOEXEC);
            Assign(socket, tcp::v4(), descriptor, error);
        }
        onAccepted(error);
    });
}

}  // namespace zeltransport
