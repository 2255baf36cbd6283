#pragma once

#include <optional>

#include <QPointF>
#include <QRectF>

#include <zelcore/Geometry.h>

namespace zelui {
namespace drawbot {

/// A point for Qt, no farther away than anything that can be seen, so that sums stay exact; none when it is no number.
std::optional<QPointF> ToQtPoint(const zelcore::geom::PointF& point);
/// The same for a rectangle; none also when it is empty.
std::optional<QRectF> ToQtRect(const zelcore::geom::RectF& rect);

}  // namespace drawbot
}  // namespace zelui
