#include "NodeWidgetAccessibility.h"

#include <QAccessibleWidget>
#include <zelui/QtBridge.h>

namespace zelui {

namespace {

class NodeWidgetAccessible final : public QAccessibleWidget {
public:
    explicit NodeWidgetAccessible(QWidget& widget) : QAccessibleWidget(&widget, QAccessible::Client) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = false;
        return state;
    }
    QStringList actionNames() const override { return {}; }
};

QAccessibleInterface* MakeNodeWidgetAccessible(const QString&, QObject* object) {
    qt::NodeWidget* const widget = dynamic_cast<qt::NodeWidget*>(object);
    return widget != nullptr ? new NodeWidgetAccessible(*widget) : nullptr;
}

}  // namespace

void InstallNodeWidgetAccessible() { QAccessible::installFactory(&MakeNodeWidgetAccessible); }

}  // namespace zelui
