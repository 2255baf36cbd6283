#pragma once

#include <QString>

#include <zelcore/PlatformHandles.h>
#include <zelcore/ustring.h>

#include <zelui/Export.h>

class QWidget;

/// The one place where a Qt host meets the toolkit's types.
namespace zelui {
namespace qt {

ZELUI_API QString ToQString(const zelcore::ustring& text);
ZELUI_API zelcore::ustring FromQString(const QString& text);

/// The widget of this process whose window is `window`; null for another one's.
ZELUI_API QWidget* FindWidget(HWND window);
/// The native window of a widget; makes it native when it is not yet.
ZELUI_API HWND GetWindowHandle(QWidget* widget);

}  // namespace qt
}  // namespace zelui
