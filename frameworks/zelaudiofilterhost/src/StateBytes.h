#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include <zelaudiofilterhost/AudioFilter.h>

namespace zelaudiofilterhost {

/// Puts numbers and bytes behind each other, the numbers with their lowest byte first. Any thread.
class StateWriter {
public:
    template <std::unsigned_integral T>
    void Put(T value) {
        for (std::size_t i = 0; i < sizeof(T); ++i) mBytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
    void Put(std::span<const std::uint8_t> bytes) { mBytes.insert(mBytes.end(), bytes.begin(), bytes.end()); }

    const AudioFilter::State& GetBytes() const { return mBytes; }
    AudioFilter::State TakeBytes() { return std::move(mBytes); }

private:
    AudioFilter::State mBytes;
};

/// Reads what StateWriter has put; never beyond the end. Any thread.
class StateReader {
public:
    /// The bytes outlive the object.
    explicit StateReader(std::span<const std::uint8_t> bytes) : mRest(bytes) {}

    /// False, and nothing taken, when there is not as much left.
    template <std::unsigned_integral T>
    bool Take(T& value) {
        if (mRest.size() < sizeof(T)) return false;
        value = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i) value = static_cast<T>(value | (T(mRest[i]) << (8 * i)));
        mRest = mRest.subspan(sizeof(T));
        return true;
    }
    bool Take(std::size_t count, AudioFilter::State& bytes) {
        if (mRest.size() < count) return false;
        bytes.assign(mRest.begin(), mRest.begin() + static_cast<std::ptrdiff_t>(count));
        mRest = mRest.subspan(count);
        return true;
    }
    std::size_t GetRest() const { return mRest.size(); }

private:
    std::span<const std::uint8_t> mRest;
};

}  // namespace zelaudiofilterhost
