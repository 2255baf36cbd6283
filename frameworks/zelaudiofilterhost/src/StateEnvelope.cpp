#include "StateEnvelope.h"

#include <span>

#include <boost/crc.hpp>

#include "StateBytes.h"

namespace zelaudiofilterhost {

namespace {

constexpr std::uint32_t kMagic = 0x534C455A;  // "ZELS" as it lies in the file
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kHeaderSize = 3 * sizeof(std::uint32_t) + sizeof(std::uint64_t) + sizeof(std::uint32_t);
constexpr std::size_t kChecksumSize = sizeof(std::uint32_t);

std::uint64_t MakeMark(const ustring& componentId) {
    // FNV-1a, which is the same on every machine and in every version of the library.
    std::uint64_t mark = 0xCBF29CE484222325;
    for (const std::uint32_t unit : componentId) {
        for (const std::uint32_t byte : {unit & 0xFF, unit >> 8}) mark = (mark ^ byte) * 0x100000001B3;
    }
    return mark;
}

std::uint32_t MakeChecksum(std::span<const std::uint8_t> bytes) {
    boost::crc_32_type crc;
    crc.process_bytes(bytes.data(), bytes.size());
    return crc.checksum();
}

bool HasChecksum(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kHeaderSize + kChecksumSize) return false;
    const std::size_t covered = bytes.size() - kChecksumSize;
    std::uint32_t checksum = 0;
    return StateReader(bytes.subspan(covered)).Take(checksum) && checksum == MakeChecksum(bytes.first(covered));
}

std::optional<StateEnvelope::Content> ReadHeader(StateReader& reader, const ustring& componentId) {
    std::uint32_t magic = 0;
    std::uint32_t version = 0;
    std::uint32_t content = 0;
    std::uint64_t mark = 0;
    if (!reader.Take(magic) || !reader.Take(version) || !reader.Take(content) || !reader.Take(mark)) return {};
    if (magic != kMagic || version != kVersion || mark != MakeMark(componentId)) return {};
    if (content < StateEnvelope::kVst2Chunk || content > StateEnvelope::kVst3Parts) return {};
    return static_cast<StateEnvelope::Content>(content);
}

bool ReadParts(StateReader& reader, std::vector<StateEnvelope::Bytes>& parts) {
    std::uint32_t count = 0;
    if (!reader.Take(count) || count > StateEnvelope::kMaxParts) return false;
    std::vector<std::uint32_t> sizes(count);
    std::uint64_t total = 0;
    for (std::uint32_t& size : sizes) {
        if (!reader.Take(size)) return false;
        total += size;
    }
    if (total != reader.GetRest()) return false;
    parts.resize(count);
    for (std::size_t i = 0; i < count; ++i) reader.Take(sizes[i], parts[i]);
    return true;
}

}  // namespace

StateEnvelope::Bytes StateEnvelope::Pack(const ustring& componentId) const {
    std::size_t size = kHeaderSize + parts.size() * sizeof(std::uint32_t) + kChecksumSize;
    for (const Bytes& part : parts) size += part.size();
    if (size > AudioFilter::kMaxStateSize || parts.size() > kMaxParts) return Bytes();

    StateWriter writer;
    writer.Put(kMagic);
    writer.Put(kVersion);
    writer.Put(static_cast<std::uint32_t>(content));
    writer.Put(MakeMark(componentId));
    writer.Put(static_cast<std::uint32_t>(parts.size()));
    for (const Bytes& part : parts) writer.Put(static_cast<std::uint32_t>(part.size()));
    for (const Bytes& part : parts) writer.Put(part);
    writer.Put(MakeChecksum(writer.GetBytes()));
    return writer.TakeBytes();
}

std::optional<StateEnvelope> StateEnvelope::Unpack(const Bytes& bytes, const ustring& componentId) {
    if (bytes.size() > AudioFilter::kMaxStateSize || !HasChecksum(bytes)) return {};
    StateReader reader(std::span<const std::uint8_t>(bytes).first(bytes.size() - kChecksumSize));
    const std::optional<Content> content = ReadHeader(reader, componentId);
    StateEnvelope envelope{content.value_or(kVst2Chunk), {}};
    if (!content || !ReadParts(reader, envelope.parts)) return {};
    return envelope;
}

}  // namespace zelaudiofilterhost
