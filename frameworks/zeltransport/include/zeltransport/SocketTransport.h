#pragma once

#include <chrono>
#include <memory>
#include <string>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <zeltransport/Session.h>

namespace zeltransport {

/// How a client connects.
struct ClientOptions {
    /// How long to go on trying while nobody listens, or while somebody else than the expected process does.
    std::chrono::milliseconds connectTimeout{10000};
    /// The process that the server must be (0: any). Checked on loopback connections before a byte is sent.
    unsigned long serverProcess = 0;
    /// Asked on the I/O thread before each further try; false gives up at once. Empty means yes.
    boost::function<bool()> keepTrying;
};

/// How a server accepts.
struct ServerOptions {
    /// The process that the client must be (0: any process of this user). Others are turned away unheard.
    unsigned long clientProcess = 0;
    /// Whether to stop listening once one client is accepted.
    bool oneClient = true;
    /// How long to go on trying to bind while somebody else holds the port.
    std::chrono::milliseconds bindTimeout{8000};
};

/// TCP connections on one I/O thread. Letting go of the last reference closes its sessions, runs their closed handlers
/// and joins the thread; from one of its own handlers it does the same without waiting. Any thread.
class ZELTRANSPORT_API SocketTransport {
public:
    /// Gets each client's session.
    typedef boost::function<void(boost::shared_ptr<Session>)> AcceptHandler;
    /// Told why the port could not be had, for developers.
    typedef boost::function<void(const std::string& reason)> ListenFailedHandler;
    /// Called when clients can connect.
    typedef boost::function<void()> ListeningHandler;

    /// Makes a transport with its I/O thread. `threadCount` must be 1: handlers rely on it (throws
    /// std::invalid_argument otherwise).
    static boost::shared_ptr<SocketTransport> Create(int threadCount);

    /// Starts a connection to `host` (a numeric address) and returns at once. The session connects in the background
    /// and retries while the peer is not listening yet, up to the options' time; then it closes.
    virtual boost::shared_ptr<Session> ClientStart(const std::string& host, unsigned short port) = 0;
    /// The same with options: whom to connect to, and for how long to try.
    virtual boost::shared_ptr<Session> ClientStart(const std::string& host, unsigned short port,
                                                   const ClientOptions& options) = 0;

    /// Listens on the loopback interface. `onAccept` gets each accepted session, which lives while somebody holds it;
    /// `onFailed` runs once if the port cannot be had in time; `onListening` (may be empty) once when it can. All three
    /// run on the I/O thread. Port 0 takes a free one, see GetListeningPort. Once per transport (throws
    /// std::logic_error otherwise).
    virtual void ServerStart(unsigned short port, const ServerOptions& options, const AcceptHandler& onAccept,
                             const ListenFailedHandler& onFailed, const ListeningHandler& onListening) = 0;
    /// The port that is listened on, 0 when none is.
    virtual unsigned short GetListeningPort() const = 0;

    virtual ~SocketTransport();
};

}  // namespace zeltransport
