#pragma once

#include <cstdint>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelcore/Geometry.h>
#include <zelui/UI_Node.h>

namespace zelui {

/// Which edges of a node follow its parent's size; combined by "or". The numbers stand in layout archives.
enum DialogConstraint : std::uint32_t {
    kLeftEdgeFree = 1,
    kTopEdgeFree = 2,
    kRightEdgePinned = 4,
    kBottomEdgePinned = 8
};

/// What a node does along one axis when its parent becomes larger or smaller.
enum class SpanKind {
    kStays,      ///< keeps its distance to the parent's beginning, and its size
    kFloats,     ///< keeps its size; what the parent gains or loses goes to both sides of it alike
    kKeptAtEnd,  ///< keeps its distance to the parent's end, and its size
    kStretches   ///< keeps both distances
};

SpanKind GetHorizontalKind(std::uint32_t constraints);
SpanKind GetVerticalKind(std::uint32_t constraints);

/// The direction in which the children of a node make room for each other.
enum class DialogFlow { kNone, kHorizontal, kVertical };

/// A node of a dialog and how it is laid out.
struct DialogLayoutItem {
    boost::intrusive_ptr<ui::UI_Node> node;
    std::uint32_t constraints = 0;  ///< combined of DialogConstraint
    DialogFlow flow = DialogFlow::kNone;
    bool keepsEndMargin = true;  ///< grows with its children, so that the margin behind the last one stays
    bool laysOutChildren = true;
    std::vector<DialogLayoutItem> children;
};

}  // namespace zelui
