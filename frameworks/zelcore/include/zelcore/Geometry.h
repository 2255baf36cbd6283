#pragma once

namespace zelcore {
namespace geom {

/// A point or a size, in the coordinate space that its user names.
template <typename T>
struct PointT {
    /// To the right.
    T x = T();
    /// Downwards.
    T y = T();

    /// Equal when all members are.
    bool operator==(const PointT&) const = default;
};

/// A rectangle: left, top, width, height, in that order. Width and height are never meant to be negative; a rectangle
/// without area is empty. The right and bottom edges lie just outside.
template <typename T>
struct RectT {
    /// The left edge.
    T left = T();
    /// The upper edge.
    T top = T();
    /// To the right of the left edge.
    T width = T();
    /// Downwards from the upper edge.
    T height = T();

    /// The right edge, which does not belong to the rectangle.
    T Right() const { return left + width; }
    /// The lower edge, which does not belong to the rectangle.
    T Bottom() const { return top + height; }
    /// True unless it is both wide and high.
    bool IsEmpty() const { return !(width > T() && height > T()); }
    /// Whether the point is in it; the left and the upper edge are.
    bool Contains(const PointT<T>& point) const {
        return point.x >= left && point.x < Right() && point.y >= top && point.y < Bottom();
    }

    /// Equal when all members are.
    bool operator==(const RectT&) const = default;
};

typedef PointT<long> Point;
typedef PointT<float> PointF;
typedef RectT<long> Rect;
typedef RectT<float> RectF;

}  // namespace geom
}  // namespace zelcore
