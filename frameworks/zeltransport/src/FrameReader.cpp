#include "FrameReader.h"

#include "FrameFormat.h"

#include <zeltransport/Session.h>

namespace zeltransport {

namespace {

// A buffer that once held a large frame is given back instead of kept for the session's life.
constexpr std::size_t kKeptCapacity = 256 * 1024;

}  // namespace

void FrameReader::Append(const char* bytes, std::size_t size) {
    if (mConsumed == mBuffer.size()) {
        Clear();
    } else if (mConsumed > mBuffer.size() / 2) {
        mBuffer.erase(0, mConsumed);
        mConsumed = 0;
    }
    mBuffer.append(bytes, size);
}

FrameReader::Status FrameReader::GetFront(std::string_view& frame) const {
    const std::string_view rest = std::string_view(mBuffer).substr(mConsumed);
    if (rest.size() < kFrameHeaderSize) return Status::kIncomplete;
    const std::size_t size = DecodeFrameSize(rest.data());
    if (size > kMaxFrameSize) return Status::kTooLong;
    if (rest.size() - kFrameHeaderSize < size) return Status::kIncomplete;
    frame = rest.substr(kFrameHeaderSize, size);
    return Status::kFrame;
}

void FrameReader::Pop() { mConsumed += kFrameHeaderSize + DecodeFrameSize(mBuffer.data() + mConsumed); }

void FrameReader::Clear() {
    mConsumed = 0;
    mBuffer.clear();
    if (mBuffer.capacity() > kKeptCapacity) mBuffer.shrink_to_fit();
}

}  // namespace zeltransport
