#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilterEditor.h>

#include <zelaudiofilterhostui/AudioFilterEditorViewBase.h>

namespace zelaudiofilterhostui {

/// The editor view of a plug-in: once opened it holds the plug-in's own editor in a platform child window or, for a
/// plug-in without one, a generic editor, as its only child, and is as large as that. Its size follows the plug-in's.
/// One view of a filter is open at a time: a second one takes the plug-in's editor away from the first. An editor that
/// does not open leaves a view without size; the host decides what to show in its place. A window that is closed, and
/// not only hidden, takes the editor along: a host that shows it again opens the editor again.
class ZELAUDIOFILTERHOSTUI_API AudioFilterEditorView : public AudioFilterEditorViewBase {
public:
    /// The view of that filter (not null), with nothing in it before OpenEditor.
    explicit AudioFilterEditorView(const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter);

    /// Opens the plug-in's editor, or makes the generic one. Exceptions of the filter pass to the caller; the view is
    /// then as before. Plug-ins run the event loop while they are asked for their editor and while it opens: a
    /// CloseEditor from there, or the end of the window, closes the editor for good, and the view is empty when this
    /// returns; of an OpenEditor from there the editor is open once.
    void OpenEditor() override;
    /// Closes the plug-in's editor and takes it away. A generic editor stays for the next opening.
    void CloseEditor() override;

    bool DispatchKeyboardFocus(bool forward) override;
    bool WantsToDispatchKeyboardFocus() override;
    bool DispatchCurrentFocus() override;
    /// True once the content is a generic editor.
    bool CanScrollContent() const override;
    /// False: a plug-in's editor changes its size by itself.
    bool CanResizeContent() const override;

    bool UI_WantsKeyboardFocus() const override;
    bool UI_WantsKeyboardFocusFromAdvance() const override;
    /// Takes no focus that is only left over from another node: a plug-in that grabs the keyboard because something
    /// else was closed is what nobody expects.
    bool UI_GainKeyboardFocus(zelui::ui::FocusChangeReason reason) override;
    bool UI_DoKeyboardEvent(const zelui::ui::KeyboardEvent& event) override;

protected:
    ~AudioFilterEditorView() override;

private:
    void OpenPluginEditor();
    void OpenGenericEditor();
    bool EmbedEditor(const boost::intrusive_ptr<zelaudiofilterhost::AudioFilterEditor>& editor);
    void RemoveContent();
    void SyncEditorViewBounds();
    void OnEditorViewSizeChanged();
    void OnAdvanceFocus(bool forward);

    // In this order: what is connected and shown goes before the editor, the editor before its focus connection.
    boost::signals::scoped_connection mAdvanceFocusConnection;
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilterEditor> mEditor;
    boost::intrusive_ptr<zelui::ui::UI_SubView> mContentView;
    zelcore::geom::RectF mLastContentRect;
    bool mInSizeChange;
    boost::signals::scoped_connection mContentSizeConnection;
    /// Never set, on purpose: it is the plug-in that decides.
    bool mCanResize;
    bool mCanScroll;
    bool mDispatchesFocus;
};

}  // namespace zelaudiofilterhostui
