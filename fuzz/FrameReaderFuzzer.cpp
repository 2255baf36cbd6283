// A stream of bytes in arbitrary pieces. Whatever the pieces are, the frames are those that the stream holds.
#include <array>
#include <string>
#include <vector>

#include <zeltransport/Session.h>

#include "FrameFormat.h"
#include "FrameReader.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using zelfuzz::Expect;
using zelfuzz::FuzzInput;
using zeltransport::FrameReader;

namespace {

/// More than the reader keeps of its memory when the stream has been read.
constexpr std::size_t kLargeFrame = 300 * 1024;
/// With such a frame pieces are so many times larger, to be through in time.
constexpr std::size_t kLargePieces = 4096;

/// What a stream holds, read at once and by the definition.
struct Content {
    std::vector<std::string_view> frames;
    std::size_t rest = 0;
    bool isTooLong = false;
};

Content ReadAtOnce(std::string_view stream) {
    Content content;
    while (stream.size() >= zeltransport::kFrameHeaderSize) {
        const auto* const byte = reinterpret_cast<const unsigned char*>(stream.data());
        const std::uint64_t size = byte[0] + 256ull * (byte[1] + 256ull * (byte[2] + 256ull * byte[3]));
        content.isTooLong = size > zeltransport::kMaxFrameSize;
        if (content.isTooLong || stream.size() - zeltransport::kFrameHeaderSize < size) break;
        content.frames.push_back(stream.substr(zeltransport::kFrameHeaderSize, size));
        stream.remove_prefix(zeltransport::kFrameHeaderSize + size);
    }
    content.rest = stream.size();
    return content;
}

std::vector<std::size_t> TakePieceSizes(FuzzInput& input) {
    std::vector<std::size_t> sizes;
    for (unsigned count = input.TakeByte() & 15; count > 0; --count) sizes.push_back(input.TakeByte());
    // One that is not nothing, or the stream would never end.
    sizes.push_back(1 + input.TakeNumber());
    return sizes;
}

FrameReader::Status Drain(FrameReader& reader, const Content& expected, std::size_t& count) {
    std::string_view frame;
    FrameReader::Status status = reader.GetFront(frame);
    for (; status == FrameReader::Status::kFrame; status = reader.GetFront(frame)) {
        Expect(count < expected.frames.size(), "no frame that the stream does not hold");
        reader.Pop();
        Expect(frame == expected.frames[count++], "a frame is what the stream holds, also when it was taken out");
    }
    return status;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzInput input(bytes, size);
    const bool beginsLarge = (input.TakeByte() & 1) != 0;
    const std::vector<std::size_t> pieces = TakePieceSizes(input);
    std::string stream;
    if (beginsLarge) {
        const zeltransport::FrameHeader header = zeltransport::EncodeFrameSize(kLargeFrame);
        stream.assign(header.begin(), header.end()).append(kLargeFrame, 'x');
    }
    stream += input.TakeRest();

    const Content expected = ReadAtOnce(stream);
    FrameReader reader;
    std::size_t count = 0;
    FrameReader::Status status = Drain(reader, expected, count);
    std::string_view rest = stream;
    for (std::size_t i = 0; !rest.empty() && status != FrameReader::Status::kTooLong; ++i) {
        // In memory of its own, so that reading beyond its end is seen.
        const std::string piece(rest.substr(0, pieces[i % pieces.size()] * (beginsLarge ? kLargePieces : 1)));
        rest.remove_prefix(piece.size());
        reader.Append(piece.data(), piece.size());
        status = Drain(reader, expected, count);
    }
    Expect(count == expected.frames.size(), "every frame that the stream holds");
    Expect((status == FrameReader::Status::kTooLong) == expected.isTooLong, "a frame that is too long is told");
    Expect(reader.GetBufferedSize() + rest.size() == expected.rest, "nothing is kept but what was not taken");
    reader.Clear();
    Expect(reader.GetBufferedSize() == 0, "nothing is left when it was cleared");
    return 0;
}
