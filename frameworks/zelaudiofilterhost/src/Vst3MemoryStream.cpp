#include "Vst3MemoryStream.h"

#include <algorithm>
#include <new>

namespace zelaudiofilterhost {

using Steinberg::int32;
using Steinberg::int64;
using Steinberg::kInvalidArgument;
using Steinberg::kResultOk;
using Steinberg::tresult;

namespace {

bool IsBuffer(const void* buffer, int32 length) { return length >= 0 && (buffer != nullptr || length == 0); }

void Report(int32* target, std::size_t length) {
    if (target != nullptr) *target = static_cast<int32>(length);
}

}  // namespace

tresult PLUGIN_API Vst3MemoryStream::read(void* buffer, int32 length, int32* lengthRead) {
    Report(lengthRead, 0);
    if (!IsBuffer(buffer, length)) return kInvalidArgument;
    const std::size_t left = mBytes.size() - std::min(mPosition, mBytes.size());
    const std::size_t taken = std::min(left, static_cast<std::size_t>(length));
    if (taken > 0) std::copy_n(mBytes.data() + mPosition, taken, static_cast<std::uint8_t*>(buffer));
    mPosition += taken;
    Report(lengthRead, taken);
    return kResultOk;
}

tresult PLUGIN_API Vst3MemoryStream::write(void* buffer, int32 length, int32* lengthWritten) {
    Report(lengthWritten, 0);
    if (!IsBuffer(buffer, length)) return kInvalidArgument;
    const auto added = static_cast<std::size_t>(length);
    if (added == 0) return kResultOk;
    const bool hadRefused = mHasRefused;
    mHasRefused = true;
    if (added > kMaxBytes - mPosition) return Steinberg::kOutOfMemory;
    try {
        mBytes.resize(std::max(mBytes.size(), mPosition + added));
    } catch (const std::bad_alloc&) {
        return Steinberg::kOutOfMemory;
    }
    mHasRefused = hadRefused;
    std::copy_n(static_cast<const std::uint8_t*>(buffer), added, mBytes.data() + mPosition);
    mPosition += added;
    Report(lengthWritten, added);
    return kResultOk;
}

tresult PLUGIN_API Vst3MemoryStream::seek(int64 position, int32 mode, int64* result) {
    constexpr auto kMax = static_cast<int64>(kMaxBytes);
    if (result != nullptr) *result = static_cast<int64>(mPosition);
    // Before anything is added to it, so that the sum cannot overflow.
    if (position < -kMax || position > kMax) return kInvalidArgument;
    int64 base = 0;
    if (mode == kIBSeekCur) {
        base = static_cast<int64>(mPosition);
    } else if (mode == kIBSeekEnd) {
        base = static_cast<int64>(mBytes.size());
    } else if (mode != kIBSeekSet) {
        return kInvalidArgument;
    }
    if (base + position < 0 || base + position > kMax) return kInvalidArgument;
    mPosition = static_cast<std::size_t>(base + position);
    if (result != nullptr) *result = base + position;
    return kResultOk;
}

tresult PLUGIN_API Vst3MemoryStream::tell(int64* position) {
    if (position == nullptr) return kInvalidArgument;
    *position = static_cast<int64>(mPosition);
    return kResultOk;
}

}  // namespace zelaudiofilterhost
