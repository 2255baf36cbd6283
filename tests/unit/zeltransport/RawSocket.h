#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zeltests {

/// A blocking loopback socket of the system's own, to be the peer that does what no session would. Every call fails the
/// test when the system refuses it.
class RawSocket {
public:
    RawSocket() = default;
    explicit RawSocket(int descriptor) : mDescriptor(descriptor) {}
    ~RawSocket() { Close(); }
    RawSocket(RawSocket&& other) noexcept : mDescriptor(other.Release()) {}
    RawSocket& operator=(RawSocket&& other) noexcept;

    static RawSocket Connect(unsigned short port);
    /// Listens on a free port, or on `port`; never accepts by itself.
    static RawSocket Listen(unsigned short port = 0);
    RawSocket Accept() const;

    unsigned short GetPort() const;
    unsigned short GetPeerPort() const;
    int Get() const { return mDescriptor; }

    void Send(const std::string& bytes) const;
    /// Sends what the system takes without waiting, and tells how much that was.
    std::size_t SendSome(std::string_view bytes) const;
    /// Everything until the peer closes.
    std::string ReceiveAll() const;
    std::string Receive(std::size_t size) const;
    void Close();

private:
    int Release();
    int mDescriptor = -1;
};

/// A port that nobody listens on at the moment.
unsigned short FindFreePort();

/// The bytes of a frame as they go over the wire.
std::string MakeFrame(const std::string& payload);
std::string MakeFrameHeader(std::uint32_t size);

}  // namespace zeltests
