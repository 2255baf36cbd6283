#include "ScreenReader.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaEnum>
#include <QSet>
#include <QSlider>
#include <QTest>

namespace zeltests {

namespace {

constexpr int kMostThings = 5000;
constexpr int kMostTabs = 200;

std::string GetRoleName(QAccessible::Role role) {
    const char* const name = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    return name != nullptr ? name : std::to_string(role);
}

std::string Describe(QAccessibleInterface& thing) {
    std::string path;
    for (QAccessibleInterface* at = &thing; at != nullptr && at->object() != qApp; at = at->parent()) {
        const QString own = at->object() != nullptr ? at->object()->objectName() : at->text(QAccessible::Name);
        path =
            "/" +
            (own.isEmpty() && at->object() != nullptr ? at->object()->metaObject()->className() : own.toStdString()) +
            path;
    }
    return path + " " + GetRoleName(thing.role()) + " '" + thing.text(QAccessible::Name).toStdString() + "'";
}

bool IsUsable(QAccessibleInterface& thing) {
    const QAccessible::State state = thing.state();
    if (state.focusable || state.selectable) return true;
    QAccessibleActionInterface* const actions = thing.actionInterface();
    return actions != nullptr && !actions->actionNames().isEmpty();
}

/// What a thing of that kind is called, where only one name is right.
QAccessible::Role GetRightRole(const QObject* object) {
    if (qobject_cast<const QCheckBox*>(object) != nullptr) return QAccessible::CheckBox;
    if (const auto* const button = qobject_cast<const QAbstractButton*>(object))
        return button->isCheckable() ? QAccessible::CheckBox : QAccessible::Button;
    if (qobject_cast<const QLineEdit*>(object) != nullptr) return QAccessible::EditableText;
    if (qobject_cast<const QComboBox*>(object) != nullptr) return QAccessible::ComboBox;
    if (qobject_cast<const QAbstractSlider*>(object) != nullptr) return QAccessible::Slider;
    return QAccessible::NoRole;
}

/// Those of what can be used, in a reader's words; boxes and panes are not among them.
bool IsRoleOfUsable(QAccessible::Role role) {
    switch (role) {
        case QAccessible::Button:
        case QAccessible::ButtonDropDown:
        case QAccessible::ButtonMenu:
        case QAccessible::Cell:
        case QAccessible::CheckBox:
        case QAccessible::ColumnHeader:
        case QAccessible::ComboBox:
        case QAccessible::EditableText:
        case QAccessible::List:
        case QAccessible::ListItem:
        case QAccessible::MenuBar:
        case QAccessible::MenuItem:
        case QAccessible::PopupMenu:
        case QAccessible::RadioButton:
        case QAccessible::RowHeader:
        case QAccessible::Slider:
        case QAccessible::Splitter:
        case QAccessible::StaticText:
        case QAccessible::Table:
        case QAccessible::Tree:
        case QAccessible::TreeItem:
            return true;
        default:
            return false;
    }
}

bool IsRoleOfWindow(QAccessible::Role role) {
    return role == QAccessible::Window || role == QAccessible::Dialog || role == QAccessible::AlertMessage ||
           role == QAccessible::PopupMenu;
}

bool IsWindow(QAccessibleInterface& thing) {
    return thing.object() != nullptr && thing.object()->isWidgetType() &&
           static_cast<QWidget*>(thing.object())->isWindow();
}

bool HasRightRole(QAccessibleInterface& thing) {
    if (IsWindow(thing)) return IsRoleOfWindow(thing.role());
    if (thing.role() == QAccessible::ProgressBar) return true;
    const QAccessible::Role right = GetRightRole(thing.object());
    return right != QAccessible::NoRole ? thing.role() == right : IsRoleOfUsable(thing.role());
}

/// The cells of Qt's own list of files, some of which are empty: a folder has no size.
bool IsListOfFiles(QAccessibleInterface& thing) {
    const auto* const view = qobject_cast<const QAbstractItemView*>(thing.object());
    return view != nullptr && view->window()->inherits("QFileDialog");
}

void Collect(QAccessibleInterface* thing, std::vector<QAccessibleInterface*>& things) {
    if (thing == nullptr || !thing->isValid() || thing->state().invisible || things.size() >= kMostThings) return;
    things.push_back(thing);
    if (IsListOfFiles(*thing)) return;
    for (int i = 0; i < thing->childCount(); ++i) {
        QAccessibleInterface* const child = thing->child(i);
        // Windows of their own are read by themselves.
        if (child != nullptr && !IsWindow(*child)) Collect(child, things);
    }
}

std::vector<QAccessibleInterface*> Read(QWidget& window) {
    std::vector<QAccessibleInterface*> things;
    Collect(QAccessible::queryAccessibleInterface(&window), things);
    return things;
}

/// A control that Tab stops at. What passes the focus on to another says that it does not take it.
bool IsTabStop(QWidget& widget) {
    return widget.isEnabled() && widget.isVisible() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
           widget.focusProxy() == nullptr && QAccessible::queryAccessibleInterface(&widget)->state().focusable;
}

}  // namespace

std::vector<std::string> ScreenReader::FindFaults(QWidget& window) {
    std::vector<std::string> faults;
    for (QAccessibleInterface* const thing : Read(window)) {
        if (!IsWindow(*thing) && !IsUsable(*thing) && thing->role() != QAccessible::ProgressBar) continue;
        if (thing->text(QAccessible::Name).trimmed().isEmpty() || !HasRightRole(*thing))
            faults.push_back(Describe(*thing));
    }
    return faults;
}

std::size_t ScreenReader::CountUsable(QWidget& window) {
    std::size_t count = 0;
    for (QAccessibleInterface* const thing : Read(window)) count += IsUsable(*thing) ? 1u : 0u;
    return count;
}

std::vector<std::string> ScreenReader::FindUnreachable(QWidget& window) {
    QSet<const QWidget*> reached;
    for (int i = 0; i < kMostTabs; ++i) {
        // Also where the platform has made no window the active one.
        QWidget* const focus = window.focusWidget();
        if (focus != nullptr && reached.contains(focus)) break;
        reached.insert(focus);
        QTest::keyClick(focus != nullptr ? focus : &window, Qt::Key_Tab);
    }
    std::vector<std::string> missed;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (widget->window() == &window && IsTabStop(*widget) && !reached.contains(widget))
            missed.push_back(std::string(widget->metaObject()->className()) + " " + widget->objectName().toStdString());
    }
    return missed;
}

}  // namespace zeltests
