#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <pluginterfaces/base/ibstream.h>

#include "Vst3Object.h"

namespace zelaudiofilterhost {

/// Bytes in memory that a VST3 plug-in writes its state to and reads it from. A read ends at the last byte, a write
/// behind it fills the gap with zeros. What leads out of 0 to kMaxBytes is refused and changes nothing. One thread at a
/// time.
class Vst3MemoryStream final : public Vst3Object<Vst3MemoryStream, Steinberg::IBStream> {
public:
    static constexpr std::size_t kMaxBytes = 64 << 20;

    Vst3MemoryStream() = default;
    /// At most kMaxBytes; the position is at the beginning.
    explicit Vst3MemoryStream(std::vector<std::uint8_t> bytes) : mBytes(std::move(bytes)) {}

    static const Steinberg::TUID& InterfaceId() { return Steinberg::IBStream_iid; }

    const std::vector<std::uint8_t>& GetBytes() const { return mBytes; }
    /// Whether something was written that had no room.
    bool HasRefused() const { return mHasRefused; }

    Steinberg::tresult PLUGIN_API read(void* buffer, Steinberg::int32 length, Steinberg::int32* lengthRead) override;
    Steinberg::tresult PLUGIN_API write(void* buffer, Steinberg::int32 length,
                                        Steinberg::int32* lengthWritten) override;
    Steinberg::tresult PLUGIN_API seek(Steinberg::int64 position, Steinberg::int32 mode,
                                       Steinberg::int64* result) override;
    Steinberg::tresult PLUGIN_API tell(Steinberg::int64* position) override;

private:
    std::vector<std::uint8_t> mBytes;
    std::size_t mPosition = 0;
    bool mHasRefused = false;
};

}  // namespace zelaudiofilterhost
