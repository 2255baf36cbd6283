#include <QAccessible>

#include <zelui/QtAccessibility.h>

namespace zelui {
namespace qt {

void SetAccessibleName(QWidget& widget, const QString& name) { widget.setAccessibleName(name); }

QString GetAccessibleName(const QWidget& widget) { return widget.accessibleName(); }

void SetAccessibleDescription(QWidget& widget, const QString& description) {
    widget.setAccessibleDescription(description);
}

QString GetAccessibleDescription(const QWidget& widget) { return widget.accessibleDescription(); }

void AnnounceAlert(QWidget& widget) {
    QAccessibleEvent event(&widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void AnnounceValue(QWidget& widget, const QString& value) {
    QAccessibleValueChangeEvent event(&widget, value);
    QAccessible::updateAccessibility(&event);
}

bool IsAccessibilityActive() { return QAccessible::isActive(); }

}  // namespace qt
}  // namespace zelui
