#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zeltransport {

/// Takes frames out of a stream of bytes. Its memory follows what has arrived, never what was announced.
class FrameReader {
public:
    enum class Status { kFrame, kIncomplete, kTooLong };

    void Append(const char* bytes, std::size_t size);
    /// The first frame that is left. `frame` stays valid until the next Append or Clear, also after Pop.
    Status GetFront(std::string_view& frame) const;
    /// Takes the first frame out; only after GetFront said that there is one.
    void Pop();
    /// Bytes that have arrived and were not taken out.
    std::size_t GetBufferedSize() const { return mBuffer.size() - mConsumed; }
    void Clear();

private:
    std::string mBuffer;
    std::size_t mConsumed = 0;
};

}  // namespace zeltransport
