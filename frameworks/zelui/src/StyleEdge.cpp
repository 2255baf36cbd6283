#include "StyleEdge.h"

#include <QColor>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>

#include <zelui/Theme.h>

namespace zelui {

namespace {

/// How much lighter than the edge the window is that the style makes such an edge for, in percent.
int GetWindowLightness(EdgeOf what) {
    switch (what) {
        case EdgeOf::kCheckBox:
            return 127;
        case EdgeOf::kFrame:
            return 130;
        case EdgeOf::kField:
            break;
    }
    return 140;
}

}  // namespace

void UseEdgeColor(QStyleOption& option, const QWidget& widget, EdgeOf what, const QColor& color) {
    // This style has no colour for edges: it darkens the window's.
    if (widget.style()->name() != QLatin1String("fusion")) return;
    option.palette.setColor(QPalette::Window, color.lighter(GetWindowLightness(what)));
}

QColor GetFrameEdgeColor() {
    const drawbot::ColorRGBA color = ui::GetColor(ui::kColorFrame);
    return QColor::fromRgbF(color.red, color.green, color.blue, color.alpha);
}

}  // namespace zelui
