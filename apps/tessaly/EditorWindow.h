#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhostui/AudioFilterChannelMapEditorView.h>
#include <zelaudiofilterhostui/AudioFilterEditorViewBase.h>
#include <zelcore/Signals.h>

class QScrollArea;
class QVBoxLayout;

namespace tessaly {

/// A window with an editor of one filter. Main thread.
class EditorWindow final : public QWidget {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> FilterPtr;

    /// Told the map of the inputs before the change and after it, then those of the outputs.
    typedef zelaudiofilterhostui::AudioFilterChannelMapEditorView::ChannelMapChangedInteractivelySignal
        RoutingChangedSignal;

    explicit EditorWindow(const FilterPtr& filter);
    /// Closes the editor first.
    ~EditorWindow() override;

    /// Shows the window with the plug-in's own editor in it, or with the parameters: when `generic` says so, when the
    /// plug-in has no editor, and when its editor does not open. The main loop goes round once in it, without the
    /// user's input: whoever holds the window looks afterwards whether it is still there.
    void Open(bool generic);
    /// Shows the window with the routing of the track's channels through the filter.
    void OpenChannelMap();

    /// Whether the plug-in's own editor is what the window shows.
    bool IsOwnEditorOpen() const { return mIsOwnEditor; }

    /// Fired after each change of the routing that the user made in this window.
    RoutingChangedSignal& GetRoutingChangedSignal() { return mRoutingChanged; }

    /// What the window shows, once it shows something: plug-ins draw when they like, some only after seconds.
    QPixmap TakePicture();

private:
    class Content;

    /// False when there is to be another editor instead.
    bool OpenOwnEditor();
    void OpenGenericEditor(const QString& note);
    void AddScrollArea(QWidget* content);
    void FitScrollArea();
    void AddNote(const QString& text);
    void OnFocusChanged(QWidget* now);
    void FitOnScreen();

    FilterPtr mFilter;
    boost::intrusive_ptr<zelaudiofilterhostui::AudioFilterEditorViewBase> mView;
    QVBoxLayout* mLayout;
    QScrollArea* mScrollArea;  ///< null where nothing is scrolled
    bool mIsOwnEditor;         ///< the plug-in's own one is open
    RoutingChangedSignal mRoutingChanged;
    boost::signals::scoped_connection mAdvanceConnection;
    boost::signals::scoped_connection mSizeConnection;
};

}  // namespace tessaly
