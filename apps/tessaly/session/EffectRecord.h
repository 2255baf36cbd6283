#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/Geometry.h>
#include <zelcore/ustring.h>

namespace tessaly {

/// The windows that one effect can have.
enum EditorKind { kOwnEditor, kGenericEditor, kChannelMapEditor };
constexpr std::size_t kEditorKindCount = 3;

/// Where a window was last, in the screen's units; none when it was never open. A width or height of 0 leaves the size
/// to the window.
typedef std::array<std::optional<zelcore::geom::RectT<long>>, kEditorKindCount> WindowPlaces;

/// One effect of a chain, as a session keeps it: enough to make it again, and to keep it where its plug-in is missing.
struct EffectRecord {
    zelcore::ustring componentId;
    zelaudiofilterhost::PluginLocator locator;  ///< where the plug-in was
    zelcore::ustring name;
    zelcore::ustring vendor;
    bool isBypassed = false;
    zelaudiofilterhost::AudioFilter::State state;
    /// Which track channels it hears and fills; none where the best fit is right.
    std::optional<zelaudiofilterhost::ChannelMap> inputMap, outputMap;
    WindowPlaces windows;

    bool operator==(const EffectRecord&) const = default;
};

}  // namespace tessaly
