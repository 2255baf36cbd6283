#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>

namespace zelaudiofilterhost {

/// What AudioFilter::GetState hands out: what a plug-in gave, with a mark of the component that gave it, so that no
/// plug-in is handed the bytes of another or damaged ones. The layout is in docs/file-formats.md. A value; any thread.
struct StateEnvelope {
    typedef AudioFilter::State Bytes;

    enum Content : std::uint32_t { kVst2Chunk = 1, kVst2Values = 2, kVst3Parts = 3 };

    static constexpr std::size_t kMaxParts = 8;

    Content content;
    /// What they are is up to the content.
    std::vector<Bytes> parts;

    /// Empty for more than AudioFilter::kMaxStateSize bytes or kMaxParts parts.
    Bytes Pack(const ustring& componentId) const;
    /// Nothing for what is no whole, undamaged envelope of this component.
    static std::optional<StateEnvelope> Unpack(const Bytes& bytes, const ustring& componentId);

    bool operator==(const StateEnvelope&) const = default;
};

}  // namespace zelaudiofilterhost
