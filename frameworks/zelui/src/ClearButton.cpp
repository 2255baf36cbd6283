#include "ClearButton.h"

#include <algorithm>

#include <QPainter>
#include <zelcore/Localizer.h>
#include <zelui/QtAccessibility.h>
#include <zelui/QtBridge.h>

#include "PlainText.h"

namespace zelui {

namespace {

constexpr int kSize = 16;
constexpr qreal kDiscShare = 0.42;
constexpr qreal kCrossShare = 0.18;
constexpr qreal kCrossWidth = 1.4;
constexpr int kHoverAlpha = 45;
constexpr int kPressedAlpha = 100;

}  // namespace

ClearButton::ClearButton(QWidget& field) : QAbstractButton(&field) {
    const QString name = qt::ToQString(zelcore::config::Localize("$$$/zelui/Clear=Clear"));
    setObjectName(QStringLiteral("ClearButton"));
    qt::SetAccessibleName(*this, name);
    setToolTip(ToToolTip(name));
    setFocusPolicy(Qt::NoFocus);
    // Not that of the text it stands in.
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_Hover);
}

QSize ClearButton::sizeHint() const { return QSize(kSize, kSize); }

void ClearButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF middle = QRectF(rect()).center();
    const qreal size = std::min(width(), height());
    QColor color = palette().color(QPalette::Text);
    if (isDown() || (underMouse() && isEnabled())) {
        QColor disc = color;
        disc.setAlpha(isDown() ? kPressedAlpha : kHoverAlpha);
        painter.setPen(Qt::NoPen);
        painter.setBrush(disc);
        painter.drawEllipse(middle, size * kDiscShare, size * kDiscShare);
    }
    const QPointF down(size * kCrossShare, size * kCrossShare);
    const QPointF up(size * kCrossShare, -size * kCrossShare);
    painter.setPen(QPen(color, kCrossWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(middle - down, middle + down);
    painter.drawLine(middle - up, middle + up);
}

}  // namespace zelui
