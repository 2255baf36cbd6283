#include "QtPath.h"

#include "QtGeometry.h"

namespace zelui {
namespace drawbot {

void QtPath::MoveTo(const zelcore::geom::PointF& point) {
    if (const std::optional<QPointF> at = ToQtPoint(point)) mPath.moveTo(*at);
}

void QtPath::LineTo(const zelcore::geom::PointF& point) {
    const std::optional<QPointF> at = ToQtPoint(point);
    if (!at) return;
    // Qt would begin at the origin.
    if (mPath.elementCount() == 0) mPath.moveTo(*at);
    mPath.lineTo(*at);
}

void QtPath::Close() { mPath.closeSubpath(); }

void QtPath::AddRect(const zelcore::geom::RectF& rect) {
    if (const std::optional<QRectF> area = ToQtRect(rect)) mPath.addRect(*area);
}

}  // namespace drawbot
}  // namespace zelui
