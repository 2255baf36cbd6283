#pragma once

namespace zelcore {
namespace geom {

/// A point or a size, in the coordinate space that its user names.
template <typename T>
struct PointT {
    T x = T();
    T y = T();

    bool operator==(const PointT&) const = default;
};

/// A rectangle: left, top, width, height, in that order. Width and height are never meant to be negative; a rectangle
/// without area is empty. The right and bottom edges lie just outside.
template <typename T>
struct RectT {
    T left = T();
    T top = T();
    T width = T();
    T height = T();

    T Right() const { return left + width; }
    T Bottom() const { return top + height; }
    bool IsEmpty() const { return !(width > T() && height > T()); }
    bool Contains(const PointT<T>& point) const {
        return point.x >= left && point.x < Right() && point.y >= top && point.y < Bottom();
    }

    bool operator==(const RectT&) const = default;
};

typedef PointT<long> Point;
typedef PointT<float> PointF;
typedef RectT<long> Rect;
typedef RectT<float> RectF;

}  // namespace geom
}  // namespace zelcore
