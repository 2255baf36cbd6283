#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace zeltests {

/// A client of the scanner made of nothing but a socket.
class RawClient {
public:
    RawClient();
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    /// Connects as soon as the scanner listens.
    bool Connect();
    bool TryConnect();
    void Close();

    void SendBytes(const std::string& bytes);
    void SendFrame(const std::string& body) { SendBytes(MakeHead(body.size()) + body); }
    static std::string MakeHead(std::size_t size);

    /// The next frame, or an empty text when the connection is closed.
    std::string Receive();
    std::string Call(const std::string& method, const std::string& parameters);

private:
    struct Socket;

    bool ReceiveExactly(std::size_t size, std::string& bytes);

    std::unique_ptr<Socket> mSocket;
};

}  // namespace zeltests
