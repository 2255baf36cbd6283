#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zeltransport {

/// A frame on the wire starts with its length: 32 bits, the lowest byte first.
constexpr std::size_t kFrameHeaderSize = 4;
typedef std::array<char, kFrameHeaderSize> FrameHeader;

inline FrameHeader EncodeFrameSize(std::uint32_t size) {
    return {static_cast<char>(size & 0xFF), static_cast<char>((size >> 8) & 0xFF),
            static_cast<char>((size >> 16) & 0xFF), static_cast<char>((size >> 24) & 0xFF)};
}

inline std::uint32_t DecodeFrameSize(const char* header) {
    std::uint32_t size = 0;
    for (std::size_t i = kFrameHeaderSize; i-- > 0;) size = (size << 8) | static_cast<unsigned char>(header[i]);
    return size;
}

}  // namespace zeltransport
