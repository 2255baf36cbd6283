#include "QtGeometry.h"

#include <algorithm>
#include <cmath>

namespace zelui {
namespace drawbot {

namespace {

const double kFarthestCoordinate = 1.0e6;

double BoundCoordinate(double coordinate) { return std::clamp(coordinate, -kFarthestCoordinate, kFarthestCoordinate); }

}  // namespace

std::optional<QPointF> ToQtPoint(const zelcore::geom::PointF& point) {
    if (std::isnan(point.x) || std::isnan(point.y)) return std::nullopt;
    return QPointF(BoundCoordinate(point.x), BoundCoordinate(point.y));
}

std::optional<QRectF> ToQtRect(const zelcore::geom::RectF& rect) {
    if (rect.IsEmpty() || std::isnan(rect.left) || std::isnan(rect.top)) return std::nullopt;
    const double left = rect.left;
    const double top = rect.top;
    return QRectF(QPointF(BoundCoordinate(left), BoundCoordinate(top)),
                  QPointF(BoundCoordinate(left + rect.width), BoundCoordinate(top + rect.height)));
}

}  // namespace drawbot
}  // namespace zelui
