#pragma once

#include <QAccessibleWidget>

namespace zelui {

/// What screen readers know of the widget that a tree of nodes is in: something that things are in. Qt gives it the
/// focus where the Tab key comes in, and it passes that on at once; a place to stop at it is not.
class NodeWidgetAccessible final : public QAccessibleWidget {
public:
    explicit NodeWidgetAccessible(QWidget& widget);

    QAccessible::State state() const override;
    QStringList actionNames() const override;
};

/// Has Qt use it for all node widgets. Again is harmless; needed again after the application object was another one.
void InstallNodeWidgetAccessible();

}  // namespace zelui
