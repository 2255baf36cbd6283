#pragma once

#include "FrameFormat.h"

#include <cstddef>
#include <deque>
#include <string>

#include <boost/asio/ip/tcp.hpp>

namespace zeltransport {

/// Frames on their way out.
class FrameWriter {
public:
    void Push(std::string&& frame);
    /// Writes as much as `socket`, which must be non-blocking, takes now. `error` is set when something is left:
    /// would_block or what went wrong. Returns how many bytes of whole frames, headers included, have gone.
    std::size_t WriteTo(boost::asio::ip::tcp::socket& socket, boost::system::error_code& error);
    void Clear();

private:
    std::deque<std::string> mFrames;
    FrameHeader mHeader{};     // of the first frame
    std::size_t mWritten = 0;  // of the first frame and its header
};

}  // namespace zeltransport
