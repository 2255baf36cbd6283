#include "SpokenText.h"

#include <QAccessible>

namespace zeltests {

QString GetSpokenName(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

QString GetSpokenDescription(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Description);
}

}  // namespace zeltests
