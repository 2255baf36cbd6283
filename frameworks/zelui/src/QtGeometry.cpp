#include "QtGeometry.h"

#include <algorithm>
#include <cmath>

namespace zelui {
namespace drawbot {

namespace {

const double kFarthest = 1.0e6;

double Bound(double coordinate) { return std::clamp(coordinate, -kFarthest, kFarthest); }

}  // namespace

std::optional<QPointF> ToQtPoint(const zelcore::geom::PointF& point) {
    if (std::isnan(point.x) || std::isnan(point.y)) return std::nullopt;
    return QPointF(Bound(point.x), Bound(point.y));
}

std::optional<QRectF> ToQtRect(const zelcore::geom::RectF& rect) {
    if (rect.IsEmpty() || std::isnan(rect.left) || std::isnan(rect.top)) return std::nullopt;
    const double left = rect.left;
    const double top = rect.top;
    return QRectF(QPointF(Bound(left), Bound(top)), QPointF(Bound(left + rect.width), Bound(top + rect.height)));
}

}  // namespace drawbot
}  // namespace zelui
