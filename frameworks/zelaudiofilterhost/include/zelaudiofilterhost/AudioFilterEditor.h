#pragma once

#include <boost/noncopyable.hpp>
#include <zelcore/Geometry.h>
#include <zelcore/PlatformHandles.h>
#include <zelcore/RefCountedObject.h>
#include <zelcore/Signals.h>

#include <zelaudiofilterhost/Export.h>

namespace zelaudiofilterhost {

/// The editor that a filter brings itself. Opened and closed any number of times; holds its filter. The last reference
/// closes it. Main thread only.
///
/// Sizes are in display units of the host: the pixels that plug-ins count in, divided by the content scale and rounded
/// up. A plug-in that throws is answered for: its exception never comes out, the call then has no effect or returns
/// false.
class ZELAUDIOFILTERHOST_API AudioFilterEditor : public zelcore::utility::RefCountedObject, private boost::noncopyable {
public:
    /// Told nothing: ask the editor for its size now.
    typedef boost::signal<void()> ContentSizeChangedSignal;
    /// Told whether the focus goes forward (true) or backward.
    typedef boost::signal<void(bool)> AdvanceFocusSignal;

    /// The rectangle that the editor wants, its left and top as the plug-in says (mostly 0). Width and height are from
    /// 0 to 16384, whatever the plug-in claims; both 0 when it has no size to tell.
    virtual zelcore::geom::Rect GetViewRect() = 0;
    /// Opens the editor in the window `parent`, which exists and may not be visible yet. False when the plug-in does
    /// not open it, or when it was closed in the middle of that; nothing is open then. Opening an open editor closes it
    /// first. A null `parent` is refused before anything happens.
    virtual bool OpenView(HWND parent) = 0;
    /// Closes the editor, before its parent window goes. Harmless when it is not open.
    virtual void CloseView() = 0;
    /// Gives the plug-in its turn. Called some 25 times a second while the editor is open.
    virtual void Idle() = 0;
    /// Whether the editor draws into a platform child window.
    virtual bool UsesPlatformView() = 0;
    /// How light the user interface is, from 0 (black) to 1 (white), and whether the user wants high contrast; passed
    /// on where the plug-in's format has a way.
    virtual void SetThemeBrightness(float brightness, bool highContrast) = 0;
    /// Passes the keyboard focus into the editor; false when it is not open or takes none.
    virtual bool DispatchKeyboardFocus(bool forward) = 0;
    /// Gives the keyboard focus to the part of the editor that had it last; false as above.
    virtual bool DispatchCurrentFocus() = 0;
    /// How many pixels a display unit of the host has on the editor's screen (1, 1.25, 2), before the editor is opened
    /// and whenever it changes; 1 until then. What is no number, or not from 0.1 to 16, is ignored. An open editor
    /// whose size in display units is another one then tells that by GetContentSizeChangedSignal, as any change of its
    /// size. Overrides call this.
    virtual void SetContentScale(float scale);
    /// A key pressed (`down`) or released while the focus is on the editor's place and not in its window. `osCode` is
    /// the key in the numbering of the Windows virtual keys, `modifiers` the sum of 1 for Shift, 2 for Control and 4
    /// for Alt, `character` what it types, 0 for nothing. True when the plug-in used it.
    virtual bool DoKey(int osCode, int modifiers, unsigned short character, bool down) = 0;

    /// Fired once for each real change of the size that the editor wants, in display units.
    ContentSizeChangedSignal& GetContentSizeChangedSignal() { return mContentSizeChangedSignal; }
    /// Fired when the keyboard focus is to go on out of the editor: forward (true) or backward.
    AdvanceFocusSignal& GetAdvanceFocusSignal() { return mAdvanceFocusSignal; }

protected:
    AudioFilterEditor();
    ~AudioFilterEditor() override;

    /// Pixels per display unit, as the editor was told last.
    float GetContentScale() const { return mContentScale; }
    /// Whether SetContentScale takes it.
    static bool IsContentScale(float scale);
    /// A rectangle of the plug-in's, in pixels, as GetViewRect answers it.
    zelcore::geom::Rect ToDisplayUnits(const zelcore::geom::Rect& pixels) const;

private:
    float mContentScale = 1.0f;
    ContentSizeChangedSignal mContentSizeChangedSignal;
    AdvanceFocusSignal mAdvanceFocusSignal;
};

}  // namespace zelaudiofilterhost
