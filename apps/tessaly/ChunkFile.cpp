#include "ChunkFile.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace tessaly {

namespace {

// Writers of metadata put down some dozens at most.
constexpr int kMostChunks = 10000;
constexpr std::uint32_t kLengthLeftOpen = 0xFFFFFFFF;

struct ChunkHeader {
    char id[4] = {};
    unsigned char length[4] = {};

    std::string_view GetId() const { return std::string_view(id, sizeof id); }
    std::uint32_t GetLength(bool bigEndian) const {
        std::uint32_t number = 0;
        for (int i = 0; i < 4; ++i) number = number << 8 | length[bigEndian ? i : 3 - i];
        return number;
    }
};

bool Read(std::ifstream& file, ChunkHeader& header) {
    file.read(header.id, sizeof header.id);
    file.read(reinterpret_cast<char*>(header.length), sizeof header.length);
    return file.good();
}

}  // namespace

bool ChunkFile::IsCutOff(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    ChunkHeader chunk;
    if (error || !Read(file, chunk)) return false;
    const bool bigEndian = chunk.GetId() == "FORM";
    if (!bigEndian && chunk.GetId() != "RIFF") return false;
    std::uintmax_t position = 12;
    for (int i = 0; i < kMostChunks; ++i) {
        file.seekg(static_cast<std::streamoff>(position));
        if (!Read(file, chunk)) return false;
        const std::uint32_t length = chunk.GetLength(bigEndian);
        position += 8;
        if (chunk.GetId() == (bigEndian ? "SSND" : "data"))
            return length != kLengthLeftOpen && position + length > size;
        position += length + length % 2;
    }
    return false;
}

}  // namespace tessaly
