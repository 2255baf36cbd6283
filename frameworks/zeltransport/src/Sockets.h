#pragma once

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

/// Accepts one connection into `socket`, or fails with would_block.
void AcceptSocket(boost::asio::ip::tcp::acceptor& acceptor, boost::asio::ip::tcp::socket& socket,
                  boost::system::error_code& error);

}  // namespace zeltransport
