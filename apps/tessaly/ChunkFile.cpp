#include "ChunkFile.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

#include "FilePath.h"

namespace tessaly {

namespace {

using namespace std::string_view_literals;

// Writers of metadata put down some dozens at most.
constexpr int kMostChunks = 10000;
constexpr std::uint64_t kLengthElsewhere = 0xFFFFFFFF;

/// How the chunks of one kind of file are laid out.
struct Kind {
    std::string_view id;       ///< that the file begins with
    std::string_view soundId;  ///< of the chunk that has the sound
    std::size_t lengthSize;
    bool bigEndian;
    std::uint64_t begin;      ///< of the first chunk
    std::uint64_t alignment;  ///< of every chunk
    std::uint64_t ownLength;  ///< what of a chunk's header is counted in its length

    std::size_t GetHeaderSize() const { return id.size() + lengthSize; }
};

constexpr Kind kKinds[] = {
    {"RIFF"sv, "data"sv, 4, false, 12, 2, 0},
    {"RIFX"sv, "data"sv, 4, true, 12, 2, 0},
    {"RF64"sv, "data"sv, 4, false, 12, 2, 0},
    {"FORM"sv, "SSND"sv, 4, true, 12, 2, 0},
    {"riff\x2e\x91\xcf\x11\xa5\xd6\x28\xdb\x04\xc1\x00\x00"sv, "data\xf3\xac\xd3\x11\x8c\xd1\x00\xc0\x4f\x8e\xdb\x8a"sv,
     8, false, 40, 8, 24},
};

std::uint64_t ReadBinaryNumber(std::string_view bytes, bool bigEndian) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[bigEndian ? i : bytes.size() - 1 - i]);
    return number;
}

/// Whether it stands for a length that was not known when it was written. Programs put down the largest number, or one
/// near the largest with a sign.
bool IsLeftOpen(std::uint64_t length, std::size_t size) {
    if (size == 8) return length >= std::uint64_t(1) << 62;
    return length == kLengthElsewhere || (length >= 0x7FFF0000 && length <= 0x80000000);
}

/// Goes through the chunks of a file.
class ChunkWalk {
public:
    explicit ChunkWalk(const std::filesystem::path& path) : mFile(path, std::ios::binary), mSize(0) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(path, error);
        if (!error) mSize = size;
    }

    bool IsCutOff() {
        const std::string_view start = Read(0, sizeof mBuffer);
        const Kind* const kind =
            std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& k) { return start.starts_with(k.id); });
        return kind != std::end(kKinds) && IsSoundCutOff(*kind);
    }

private:
    bool IsSoundCutOff(const Kind& kind) {
        std::uint64_t position = kind.begin;
        std::uint64_t largeLength = UINT64_MAX;
        for (int i = 0; i < kMostChunks; ++i) {
            const std::string_view header = Read(position, kind.GetHeaderSize());
            if (header.size() < kind.GetHeaderSize()) return false;
            const bool isSound = header.starts_with(kind.soundId);
            const bool isLargeLength = header.starts_with("ds64");
            std::uint64_t length = ReadBinaryNumber(header.substr(kind.id.size()), kind.bigEndian);
            if (length < kind.ownLength) return false;
            length -= kind.ownLength;
            position += header.size();
            if (isSound) return ReachesBeyondEnd(position, length, kind, largeLength);
            if (isLargeLength) largeLength = ReadLargeLength(position);
            if (length > mSize - position) return false;
            position += length;
            position += (kind.alignment - position % kind.alignment) % kind.alignment;
        }
        return false;
    }

    bool ReachesBeyondEnd(std::uint64_t position, std::uint64_t length, const Kind& kind, std::uint64_t largeLength) {
        if (length == kLengthElsewhere && kind.id == "RF64")
            return !IsLeftOpen(largeLength, sizeof largeLength) && largeLength > mSize - position;
        return !IsLeftOpen(length, kind.lengthSize) && length > mSize - position;
    }

    /// That of the sound stands behind that of the file.
    std::uint64_t ReadLargeLength(std::uint64_t position) {
        const std::string_view lengths = Read(position, 16);
        return lengths.size() == 16 ? ReadBinaryNumber(lengths.substr(8), false) : UINT64_MAX;
    }

    /// As much of it as there is.
    std::string_view Read(std::uint64_t position, std::size_t size) {
        if (position >= mSize) return std::string_view();
        mFile.clear();
        mFile.seekg(static_cast<std::streamoff>(position));
        mFile.read(mBuffer, static_cast<std::streamsize>(std::min<std::uint64_t>(size, mSize - position)));
        return std::string_view(mBuffer, static_cast<std::size_t>(mFile.gcount()));
    }

    std::ifstream mFile;
    std::uint64_t mSize;
    char mBuffer[24] = {};
};

}  // namespace

bool ChunkFile::IsCutOff(const std::string& path) { return ChunkWalk(ToFilePath(path)).IsCutOff(); }

}  // namespace tessaly
