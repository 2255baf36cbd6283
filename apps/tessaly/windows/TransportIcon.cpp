#include "TransportIcon.h"

#include <QPainter>
#include <QPainterPath>

namespace tessaly {

namespace {

constexpr int kIconSize = 16;
/// Enough for every screen's scale that there is.
constexpr int kPixels = 64;

QPainterPath MakePath(TransportSign sign) {
    QPainterPath path;
    switch (sign) {
        case TransportSign::kPlay:
            path.addPolygon(QPolygonF({{4.0, 2.0}, {14.0, 8.0}, {4.0, 14.0}}));
            break;
        case TransportSign::kStop:
            path.addRect(3.0, 3.0, 10.0, 10.0);
            break;
        case TransportSign::kRewind:
            path.addRect(3.0, 3.0, 2.0, 10.0);
            path.addPolygon(QPolygonF({{13.0, 3.0}, {5.0, 8.0}, {13.0, 13.0}}));
            break;
    }
    return path;
}

QPixmap Paint(TransportSign sign, const QColor& colour) {
    QPixmap pixmap(kPixels, kPixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(static_cast<double>(kPixels) / kIconSize, static_cast<double>(kPixels) / kIconSize);
    painter.fillPath(MakePath(sign), colour);
    return pixmap;
}

}  // namespace

QIcon MakeTransportIcon(TransportSign sign, const QPalette& palette) {
    QIcon icon(Paint(sign, palette.color(QPalette::Active, QPalette::ButtonText)));
    icon.addPixmap(Paint(sign, palette.color(QPalette::Disabled, QPalette::ButtonText)), QIcon::Disabled);
    return icon;
}

}  // namespace tessaly
