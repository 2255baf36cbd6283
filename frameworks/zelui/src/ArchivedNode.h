#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <zelcore/Geometry.h>
#include <zelcore/ustring.h>

#include <zelui/Export.h>

namespace zelui {

constexpr int kMaxArchivedNodeDepth = 32;
constexpr std::size_t kMaxArchivedNodes = 2000;
/// Beyond it no edge of a node may lie, to either side of 0.
constexpr float kLargestArchivedBound = 16000000.0f;

/// A node as it stands in a layout archive, its texts in the user's language.
struct ArchivedNode {
    std::string adapter;
    zelcore::ustring className;  ///< empty when it has none
    std::string id;
    zelcore::geom::RectF bounds;
    zelcore::ustring toolTip;
    bool visible = true;

    std::uint32_t constraints = 0;  ///< combined of DialogLayout::Constraint
    bool autoLayout = false;
    bool autoLayoutHorizontal = false;
    bool maintainMargins = true;
    bool layoutChildren = true;

    // What only some kinds of nodes have.
    std::optional<bool> enabled;
    std::optional<bool> wantsFocus;
    std::optional<bool> checked;
    std::optional<zelcore::ustring> text;
    std::optional<int> alignment;

    std::vector<ArchivedNode> children;
    long line = 0;
};

/// Reads the root node and all that is in it. Throws ui::ArchiveError for what is no layout archive. Main thread.
ZELUI_API ArchivedNode ReadArchivedNodes(const std::string& bytes);

}  // namespace zelui
