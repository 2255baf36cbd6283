// Frames of arbitrary sizes through a socket that takes little at a time. What was sent is what arrives.
#include <deque>
#include <string>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>

#include <boost/asio/io_context.hpp>

#include "FrameReader.h"
#include "FrameWriter.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using boost::asio::ip::tcp;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;
using zeltransport::FrameReader;
using zeltransport::FrameWriter;

namespace {

/// The two ends of one connection within this process.
class Wire {
public:
    Wire() {
        int ends[2];
        Expect(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends) == 0, "there are sockets");
        // The least that there is: frames have to go in several parts.
        const int least = 1;
        setsockopt(ends[0], SOL_SOCKET, SO_SNDBUF, &least, sizeof(least));
        mOut.assign(tcp::v4(), ends[0]);
        mOut.non_blocking(true);
        mIn = ends[1];
    }

    tcp::socket& GetOut() { return mOut; }
    std::size_t Read(char* bytes, std::size_t size) const {
        const ssize_t count = read(mIn, bytes, size);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

private:
    boost::asio::io_context mContext;
    tcp::socket mOut{mContext};
    int mIn = -1;
};

/// Both sides, and what is under way between them.
class Conversation {
public:
    explicit Conversation(Wire& wire) : mWire(wire) {}

    void Push(std::size_t size, char fill) {
        std::string frame(size, fill);
        if (!frame.empty()) frame.back() = '.';
        mQueued += zeltransport::kFrameHeaderSize + size;
        mUnderWay.push_back(frame);
        mWriter.Push(std::move(frame));
    }
    void Write() {
        boost::system::error_code error;
        mGone += mWriter.WriteTo(mWire.GetOut(), error);
        Expect(!error || error == boost::asio::error::would_block, "nothing fails");
        Expect(mGone <= mQueued && (error || mGone == mQueued), "what has gone is counted");
    }
    /// False when nothing came.
    bool Read(std::size_t most) {
        std::string bytes(most, '\0');
        bytes.resize(mWire.Read(bytes.data(), bytes.size()));
        mReader.Append(bytes.data(), bytes.size());
        std::string_view frame;
        FrameReader::Status status = mReader.GetFront(frame);
        for (; status == FrameReader::Status::kFrame; status = mReader.GetFront(frame)) {
            Expect(!mUnderWay.empty() && frame == mUnderWay.front(), "frames arrive as they were, in their order");
            mUnderWay.pop_front();
            mReader.Pop();
        }
        Expect(status == FrameReader::Status::kIncomplete, "no frame is too long");
        return !bytes.empty();
    }
    bool IsOver() const { return mUnderWay.empty() && mReader.GetBufferedSize() == 0 && mGone == mQueued; }

private:
    Wire& mWire;
    FrameWriter mWriter;
    FrameReader mReader;
    std::deque<std::string> mUnderWay;
    std::size_t mQueued = 0;
    std::size_t mGone = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // Each byte costs calls into the system; longer conversations show nothing new.
    constexpr std::size_t kMaxInput = 256;
    static Wire* const wire = new Wire;
    FuzzInput input(bytes, std::min(size, kMaxInput));
    Conversation conversation(*wire);
    while (!input.IsEmpty()) {
        const unsigned what = input.TakeByte();
        switch (what & 3) {
            case 0:
                conversation.Push(input.TakeNumber(), static_cast<char>(what));
                break;
            case 1:
                conversation.Push(what >> 2, static_cast<char>(what));
                break;
            case 2:
                conversation.Write();
                break;
            default:
                conversation.Read(1 + input.TakeNumber());
        }
    }
    do {
        conversation.Write();
    } while (conversation.Read(65536));
    Expect(conversation.IsOver(), "all of it arrives");
    return 0;
}
