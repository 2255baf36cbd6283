#pragma once

#include <vector>

#include <zelui/Export.h>

#include "DialogLayoutItem.h"

namespace zelui {

/// A node along one axis.
struct Span {
    float start = 0.0f;
    float size = 0.0f;
    float need = 0.0f;  ///< the size without which something of it would be cut off
    SpanKind kind = SpanKind::kStays;

    float GetEnd() const { return start + size; }
    float GetGrowth() const { return need > size ? need - size : 0.0f; }
};

/// What is left of the margin behind the last child when the room is needed.
constexpr float kSmallestMargin = 4.0f;

/// The children of a node along one axis, for the one time when each is given the size that it needs.
class ZELUI_API DialogLayoutAxis {
public:
    /// `extent` is the parent's size. With `inRow` a child that grows moves those behind it (kept at the end: before
    /// it) on. With `keepsEndMargin` the parent grows with its last child even where it has room.
    DialogLayoutAxis(std::vector<Span> children, float extent, bool inRow, bool keepsEndMargin);

    /// The size that the parent needs; at least its own.
    float GetNeed() const;
    /// Where the children stand, and how large they are, in a parent of that size.
    std::vector<Span> Arrange(float extent) const;

private:
    void MoveOn();
    float GetRoomAtEnd(const Span& child) const;
    float NeedOf(std::size_t child) const;
    float NeedBetween(std::size_t before, std::size_t behind) const;

    std::vector<Span> mChildren;
    float mExtent;
    bool mInRow;
    bool mKeepsEndMargin;
    std::vector<float> mFromStart;  ///< how far the start of each child is moved away from the parent's beginning
    std::vector<float> mFromEnd;    ///< the same for its end, away from the parent's end
};

}  // namespace zelui
