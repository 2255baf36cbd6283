#pragma once

#include <functional>

#include <boost/asio/ip/tcp.hpp>

namespace zeltransport {

/// Sockets as this library wants them: child processes, also those that other threads start meanwhile, do not inherit
/// them. A copy in a child would keep a port or a connection alive after this process let go of it.

/// Opens `socket` for connecting to an address of the protocol.
void OpenSocket(boost::asio::ip::tcp::socket& socket, const boost::asio::ip::tcp& protocol,
                boost::system::error_code& error);

/// Binds `acceptor` to `endpoint` and listens, without waiting in Accept. Connections that an earlier server left on
/// the port do not stand in the way, another listener does. On failure the acceptor is closed.
void OpenListener(boost::asio::ip::tcp::acceptor& acceptor, const boost::asio::ip::tcp::endpoint& endpoint,
                  boost::system::error_code& error);

/// What is told when accepting has come to an end, good or bad.
typedef std::function<void(const boost::system::error_code&)> AcceptHandler;

/// Accepts one connection into `socket` once there is one. Ends with would_block when it was gone again. Both stay
/// where they are until the handler was called, which may be after the acceptor was closed.
void AcceptSocket(boost::asio::ip::tcp::acceptor& acceptor, boost::asio::ip::tcp::socket& socket,
                  const AcceptHandler& onAccepted);

}  // namespace zeltransport
