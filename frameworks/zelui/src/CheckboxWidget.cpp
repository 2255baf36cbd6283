#include "CheckboxWidget.h"

#include <algorithm>

#include <QStyleOptionButton>

#include "ColorContrast.h"
#include "StyleEdge.h"

namespace zelui {

namespace {

constexpr double kContrast = 3.0;
constexpr double kDisabledContrast = 2.0;

/// An edge that can be told from the window, from a list, and from what is inside the box.
QColor FindEdgeColor(const QPalette& palette, bool isEnabled) {
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(isEnabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    for (float part = 0.3f; part < 1.0f; part += 0.05f) {
        const QColor edge = Mix(window, text, part);
        const double contrast = std::min({GetContrast(edge, window), GetContrast(edge, palette.color(QPalette::Base)),
                                          GetContrast(edge, palette.color(QPalette::Active, QPalette::Base))});
        if (contrast >= (isEnabled ? kContrast : kDisabledContrast)) return edge;
    }
    return text;
}

}  // namespace

void CheckboxWidget::initStyleOption(QStyleOptionButton* option) const {
    QCheckBox::initStyleOption(option);
    UseEdgeColor(*option, *this, EdgeOf::kCheckBox, FindEdgeColor(option->palette, isEnabled()));
}

}  // namespace zelui
