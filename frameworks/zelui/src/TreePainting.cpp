#include "TreePainting.h"

#include <QPainter>
#include <QWidget>

namespace zelui {

void PaintRowBackground(QPainter& painter, const QWidget& list, const QRect& row, bool isOdd, bool isSelected) {
    const QPalette& palette = list.palette();
    if (!isSelected) {
        if (isOdd && list.isEnabled()) painter.fillRect(row, palette.brush(QPalette::Active, QPalette::AlternateBase));
        return;
    }
    painter.save();
    if (!list.isEnabled()) painter.setOpacity(kDisabledOpacity);
    painter.fillRect(row, palette.brush(QPalette::Active, QPalette::Highlight));
    painter.restore();
}

void PaintFocusLine(QPainter& painter, const QWidget& list, const QRect& place, bool isSelected) {
    const QPalette::ColorRole role = isSelected ? QPalette::HighlightedText : QPalette::Text;
    painter.setPen(list.palette().color(QPalette::Active, role));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place.adjusted(1, 1, -2, -2));
}

}  // namespace zelui
