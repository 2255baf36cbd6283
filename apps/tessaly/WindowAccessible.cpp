#include "WindowAccessible.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace tessaly {

namespace {

constexpr char kProperty[] = "tessalyWindowRole";

QAccessibleInterface* MakeWindowAccessible(const QString&, QObject* object) {
    const QVariant role = object->property(kProperty);
    if (!role.isValid()) return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void SetWindowRole(QWidget& window, QAccessible::Role role) {
    window.setProperty(kProperty, static_cast<int>(role));
    // Again is harmless.
    QAccessible::installFactory(&MakeWindowAccessible);
}

}  // namespace tessaly
