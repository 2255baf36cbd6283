#pragma once

#include <exception>
#include <functional>

namespace zelui {
namespace ui {

/// For who shows a node tree: `observer` is called on the main thread after every change of the theme's colours, before
/// the functions that were installed, and calls UI_ThemeChanged of the nodes. The id is for RemoveThemeObserver. Both
/// may be called at any time, also by an observer. An exception of one does not keep the others from being called.
int AddThemeObserver(const std::function<void()>& observer);
/// Harmless for an id that is not known.
void RemoveThemeObserver(int id);

/// Calls all observers, then all installed functions; the first exception that one threw, or none. When one of them
/// changes the theme itself, the rest is told of that change and no more of this one.
std::exception_ptr TellThemeChanged();

}  // namespace ui
}  // namespace zelui
