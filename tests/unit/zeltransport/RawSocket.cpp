#include "RawSocket.h"

#include <utility>

namespace zeltests {

RawSocket& RawSocket::operator=(RawSocket&& other) noexcept {
    std::swap(mDescriptor, other.mDescriptor);
    return *this;
}

int RawSocket::Release() { return std::exchange(mDescriptor, -1); }

unsigned short FindFreePort() { return RawSocket::Listen().GetPort(); }

std::string MakeFrameHeader(std::uint32_t size) {
    std::string header;
    for (unsigned shift = 0; shift < 32; shift += 8) header.push_back(static_cast<char>((size >> shift) & 0xFF));
    return header;
}

std::string MakeFrame(const std::string& payload) {
    return MakeFrameHeader(static_cast<std::uint32_t>(payload.size())) + payload;
}

}  // namespace zeltests
