#include <QVariant>

#include <zelui/QtAccessibility.h>

namespace zelui {
namespace qt {

namespace {

// As they are called where Qt has them.
constexpr char kNameProperty[] = "accessibleName";
constexpr char kDescriptionProperty[] = "accessibleDescription";

}  // namespace

void SetAccessibleName(QWidget& widget, const QString& name) { widget.setProperty(kNameProperty, name); }

QString GetAccessibleName(const QWidget& widget) { return widget.property(kNameProperty).toString(); }

void SetAccessibleDescription(QWidget& widget, const QString& description) {
    widget.setProperty(kDescriptionProperty, description);
}

QString GetAccessibleDescription(const QWidget& widget) { return widget.property(kDescriptionProperty).toString(); }

void AnnounceAlert(QWidget&) {}

void AnnounceValue(QWidget&, const QString&) {}

bool IsAccessibilityActive() { return false; }

}  // namespace qt
}  // namespace zelui
