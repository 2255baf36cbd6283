#include "Sockets.h"

#include <windows.h>

namespace zeltransport {

using boost::asio::ip::tcp;
using boost::system::error_code;

namespace {

template <typename Socket>
void KeepFromChildren(Socket& socket) {
    ::SetHandleInformation(reinterpret_cast<HANDLE>(socket.native_handle()), HANDLE_FLAG_INHERIT, 0);
}

}  // namespace

void OpenSocket(tcp::socket& socket, const tcp& protocol, error_code& error) {
    socket.open(protocol, error);
    if (!error) KeepFromChildren(socket);
}

void OpenListener(tcp::acceptor& acceptor, const tcp::endpoint& endpoint, error_code& error) {
    acceptor.open(endpoint.protocol(), error);
    if (!error) KeepFromChildren(acceptor);
    // Address reuse means something else here: it would let another process take the port over.
    typedef boost::asio::detail::socket_option::boolean<SOL_SOCKET, SO_EXCLUSIVEADDRUSE> ExclusiveAddress;
    if (!error) acceptor.set_option(ExclusiveAddress(true), error);
    if (!error) acceptor.bind(endpoint, error);
    if (!error) acceptor.listen(tcp::acceptor::max_listen_connections, error);
    if (!error) acceptor.non_blocking(true, error);
    error_code ignored;
    if (error) acceptor.close(ignored);
}

void AcceptSocket(tcp::acceptor& acceptor, tcp::socket& socket, error_code& error) {
    acceptor.accept(socket, error);
    if (!error) KeepFromChildren(socket);
}

}  // namespace zeltransport
