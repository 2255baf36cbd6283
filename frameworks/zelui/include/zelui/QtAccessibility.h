#pragma once

#include <QString>
#include <QWidget>

#include <zelui/Export.h>

/// What screen readers are told of a Qt host's widgets. Qt may have been built without them: names and descriptions
/// are kept then as well, and nobody is told.
namespace zelui {
namespace qt {

/// What the widget is called. Empty: whatever Qt finds, as a button's text.
ZELUI_API void SetAccessibleName(QWidget& widget, const QString& name);
/// As it was set; empty when it never was.
ZELUI_API QString GetAccessibleName(const QWidget& widget);

/// What there is to say of it besides its name.
ZELUI_API void SetAccessibleDescription(QWidget& widget, const QString& description);
/// As it was set; empty when it never was.
ZELUI_API QString GetAccessibleDescription(const QWidget& widget);

/// Has what is shown in the widget read out now, whatever has the focus.
ZELUI_API void AnnounceAlert(QWidget& widget);
/// Says that the widget's value is another one now.
ZELUI_API void AnnounceValue(QWidget& widget, const QString& value);

/// Whether somebody asks about widgets, so that those out of view must be there as well.
ZELUI_API bool IsAccessibilityActive();

}  // namespace qt
}  // namespace zelui
