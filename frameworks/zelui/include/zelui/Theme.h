#pragma once

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>
#include <zelcore/ustring.h>

#include <zelui/Drawbot.h>
#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// The colours that the user interface has now: the system's, or what the host chose. Main thread.
class ZELUI_API Theme {
public:
    /// kSystem follows the desktop and its changes.
    enum Choice { kSystem, kLight, kDark };

    /// The one theme of the process.
    static Theme& Get();

    /// From 0 (black) to 1 (white): how light the background of windows is.
    float GetBrightness() const;
    /// Whether light letters stand on dark ground.
    bool IsDark() const { return GetBrightness() < 0.5f; }

    /// Gives all windows of the application the light or the dark colours, or the system's again. Tells whom it
    /// concerns before it returns, and then throws what the first of those threw, if one did. Without an application
    /// object it has no effect.
    void Choose(Choice choice);
    /// What Choose said last; kSystem at first.
    Choice GetChoice() const;

private:
    Theme();
    ~Theme() = default;
    Theme(const Theme&) = delete;
    Theme& operator=(const Theme&) = delete;
};

typedef boost::function<void()> ThemeChangedFunction;

/// Has `function` called on the main thread after every change of the theme's colours. The toolkit keeps its copy of
/// the shared pointer; whoever installed it ends the calls by emptying the function, and the toolkit then lets go of it
/// at the next change or installation. A function may install or empty functions, itself included, and choose a theme;
/// one that is installed twice is called once.
ZELUI_API void InstallThemeChangedFunction(const boost::shared_ptr<ThemeChangedFunction>& function);

/// What hears of theme changes as part of a node tree: every node whose tree is on the screen.
class ZELUI_API ThemeClient {
public:
    /// Called after the colours have changed, before the node is painted again. Does nothing by itself.
    virtual void UI_ThemeChanged();

protected:
    virtual ~ThemeClient();
};

/// What answers which theme its part of the tree has. There is one theme for the whole application.
class ZELUI_API ThemeOwner {
public:
    /// The theme to draw with.
    const Theme& UI_GetTheme() const { return Theme::Get(); }

protected:
    virtual ~ThemeOwner();
};

/// The family name of a font by its number: 0 is the one that controls use, and any other number too.
ZELUI_API zelcore::ustring GetFontName(int index);

/// Colours by number, as they are now. The numbers are the toolkit's own and do not change.
enum ColorNumber {
    kColorListText = 282,             ///< text in lists
    kColorListTextHighlighted = 283,  ///< text in a highlighted row
    kColorFrame = 324                 ///< lines round groups of controls
};
/// The colour of that number; the colour of list text for one that is not known.
ZELUI_API drawbot::ColorRGBA GetColor(int number);

}  // namespace ui
}  // namespace zelui
