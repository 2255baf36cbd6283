#include <QWidget>

#include <zelui/QtBridge.h>

namespace zelui {
namespace qt {

QString ToQString(const zelcore::ustring& text) {
    // Unit by unit: the converting functions take a leading byte-order mark for a command.
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

zelcore::ustring FromQString(const QString& text) {
    return zelcore::ustring(text.utf16(), static_cast<std::size_t>(text.size()));
}

QWidget* FindWidget(HWND window) { return window ? QWidget::find(reinterpret_cast<WId>(window)) : nullptr; }

HWND GetWindowHandle(QWidget* widget) { return widget ? reinterpret_cast<HWND>(widget->winId()) : nullptr; }

}  // namespace qt
}  // namespace zelui
