#include "NodeWidgetAccessible.h"

#include <zelui/QtBridge.h>

namespace zelui {

namespace {

QAccessibleInterface* MakeNodeWidgetAccessible(const QString&, QObject* object) {
    qt::NodeWidget* const widget = dynamic_cast<qt::NodeWidget*>(object);
    return widget != nullptr ? new NodeWidgetAccessible(*widget) : nullptr;
}

}  // namespace

NodeWidgetAccessible::NodeWidgetAccessible(QWidget& widget) : QAccessibleWidget(&widget, QAccessible::Client) {}

QAccessible::State NodeWidgetAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.focusable = false;
    return state;
}

QStringList NodeWidgetAccessible::actionNames() const { return {}; }

void InstallNodeWidgetAccessible() { QAccessible::installFactory(&MakeNodeWidgetAccessible); }

}  // namespace zelui
