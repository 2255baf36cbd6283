#pragma once

#include <QAccessible>
#include <zelui/QtBridge.h>
#include <zelui/UI_Node.h>

namespace zeltests {

/// The node as screen readers have it.
inline QAccessibleInterface* GetAccessible(const zelui::ui::UI_Node& node) {
    return QAccessible::queryAccessibleInterface(zelui::qt::GetWidget(node));
}

}  // namespace zeltests
