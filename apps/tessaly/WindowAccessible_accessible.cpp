#include "WindowAccessible.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace tessaly {

namespace {

constexpr char kProperty[] = "tessalyWindowKind";

QAccessibleInterface* MakeWindowAccessible(const QString&, QObject* object) {
    const QVariant kind = object->property(kProperty);
    if (!kind.isValid()) return nullptr;
    const bool isDialog = static_cast<WindowKind>(kind.toInt()) == WindowKind::kDialog;
    return new QAccessibleWidget(static_cast<QWidget*>(object), isDialog ? QAccessible::Dialog : QAccessible::Window);
}

}  // namespace

void SetWindowKind(QWidget& window, WindowKind kind) {
    window.setProperty(kProperty, static_cast<int>(kind));
    // Again is harmless.
    QAccessible::installFactory(&MakeWindowAccessible);
}

}  // namespace tessaly
