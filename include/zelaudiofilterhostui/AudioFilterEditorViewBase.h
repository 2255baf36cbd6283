#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelcore/Signals.h>
#include <zelui/UI_SubView.h>

#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// An editor of one audio filter, as a host drives it whatever kind of editor it is. The host puts the view into a
/// window, calls OpenEditor, and CloseEditor before it takes the view away again. Held by intrusive pointer; it holds
/// its filter for its whole life. Main thread only.
///
/// What a kind of editor does not override makes it an editor of fixed size that does not scroll, is one stop of the
/// keyboard focus, and has nothing to open or close.
class ZELAUDIOFILTERHOSTUI_API AudioFilterEditorViewBase : public zelui::ui::UI_SubView {
public:
    /// Told nothing: the view's frame has the size.
    typedef boost::signal<void()> ContentSizeChangedSignal;
    /// Told whether the focus goes forward (true) or backward.
    typedef boost::signal<void(bool)> AdvanceFocusSignal;

    /// The filter that the view edits: the same for its whole life.
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> GetAudioFilter() const;

    /// Fired after the size of the content has changed: the host lays out what is round the view. Not by OpenEditor,
    /// after which the host reads the view's frame itself. A size that changes while this is being fired is not told;
    /// whoever is told may let go of the view.
    ContentSizeChangedSignal& GetContentSizeChangedSignal();
    /// Fired when the keyboard focus is to go on, out of the editor into the host's controls: forward (true) or
    /// backward. A host that does not listen leaves people without a way out by the keyboard.
    AdvanceFocusSignal& GetAdvanceFocusSignal();

    /// Makes the content live; a plug-in's own editor opens its window here. The view stands in a window by then.
    virtual void OpenEditor();
    /// The reverse of OpenEditor, before the view leaves its window.
    virtual void CloseEditor();

    /// Passes the keyboard focus into the content, to its first part (`forward`) or its last; true when it was taken.
    virtual bool DispatchKeyboardFocus(bool forward);
    /// Whether the host is to pass the focus in by DispatchKeyboardFocus, in place of treating the view as one stop.
    virtual bool WantsToDispatchKeyboardFocus();
    /// Gives the keyboard focus to the part of the content that has it within the content; true when that was done.
    virtual bool DispatchCurrentFocus();

    /// Whether the host may show the content in a smaller frame in which it is scrolled.
    virtual bool CanScrollContent() const;
    /// Whether the host may change the content's size.
    virtual bool CanResizeContent() const;

protected:
    /// `filter` must not be null.
    explicit AudioFilterEditorViewBase(const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter);
    ~AudioFilterEditorViewBase() override;

private:
    // In this order: the filter goes first, the signals last.
    ContentSizeChangedSignal mContentSizeChangedSignal;
    AdvanceFocusSignal mAdvanceFocusSignal;

protected:
    /// For one connection of a derived view's that ends with the view.
    boost::signals::scoped_connection mConnection;

private:
    const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> mFilter;
};

}  // namespace zelaudiofilterhostui
