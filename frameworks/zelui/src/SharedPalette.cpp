#include "SharedPalette.h"

#include <QApplication>
#include <QPalette>
#include <QStyleOption>
#include <QWidget>

namespace zelui {

void UseSharedPalette(QStyleOption& option, const QWidget& widget) {
    const QPalette shared = QApplication::palette(&widget);
    // A host may give a window colours of its own, which the controls in it inherit.
    if (option.palette != shared) return;
    const QPalette::ColorGroup group = option.palette.currentColorGroup();
    option.palette = shared;
    option.palette.setCurrentColorGroup(group);
}

}  // namespace zelui
