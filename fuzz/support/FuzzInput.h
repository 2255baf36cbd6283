#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <zelcore/ustring.h>

namespace zelfuzz {

/// Takes the bytes that a fuzzer was given apart. Never runs out: behind the end numbers are 0 and texts empty.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* bytes, std::size_t size) : mRest(reinterpret_cast<const char*>(bytes), size) {}

    bool IsEmpty() const { return mRest.empty(); }
    unsigned TakeByte() {
        const std::string_view byte = TakeBytes(1);
        return byte.empty() ? 0 : static_cast<unsigned char>(byte.front());
    }
    /// Two bytes, the lower one first.
    unsigned TakeNumber() {
        const unsigned low = TakeByte();
        return low | (TakeByte() << 8);
    }
    std::string_view TakeBytes(std::size_t count) {
        const std::string_view bytes = mRest.substr(0, count);
        mRest.remove_prefix(bytes.size());
        return bytes;
    }
    /// Up to the end of the line, which is taken with it.
    std::string_view TakeLine() {
        const std::string_view line = mRest.substr(0, mRest.find('\n'));
        mRest.remove_prefix(std::min(mRest.size(), line.size() + 1));
        return line;
    }
    std::string_view TakeRest() { return TakeBytes(mRest.size()); }

private:
    std::string_view mRest;
};

/// The bytes as code units, whatever they are, so that there are surrogates without partners among them.
inline zelcore::ustring ToUnits(std::string_view bytes) {
    zelcore::ustring units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]), high = static_cast<unsigned char>(bytes[i + 1]);
        units.push_back(static_cast<unsigned short>(low | (high << 8)));
    }
    return units;
}

}  // namespace zelfuzz
