#include "FrameWriter.h"

#include <utility>

#include <boost/asio/buffer.hpp>

namespace zeltransport {

void FrameWriter::Push(std::string&& frame) { mFrames.push_back(std::move(frame)); }

std::size_t FrameWriter::WriteTo(boost::asio::ip::tcp::socket& socket, boost::system::error_code& error) {
    std::size_t gone = 0;
    error.clear();
    while (!mFrames.empty()) {
        const std::string& frame = mFrames.front();
        if (mWritten == 0) mHeader = EncodeFrameSize(static_cast<std::uint32_t>(frame.size()));
        // Header and body go in one call, so that a small frame is one packet.
        std::array<boost::asio::const_buffer, 2> buffers = {boost::asio::buffer(mHeader), boost::asio::buffer(frame)};
        std::size_t skip = mWritten;
        for (boost::asio::const_buffer& buffer : buffers) {
            const std::size_t skipHere = skip < buffer.size() ? skip : buffer.size();
            buffer += skipHere;
            skip -= skipHere;
        }
        mWritten += socket.write_some(buffers, error);
        if (error) return gone;
        if (mWritten < kFrameHeaderSize + frame.size()) continue;
        gone += kFrameHeaderSize + frame.size();
        mWritten = 0;
        mFrames.pop_front();
    }
    return gone;
}

void FrameWriter::Clear() {
    mFrames.clear();
    mWritten = 0;
}

}  // namespace zeltransport
