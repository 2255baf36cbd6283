#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include <boost/intrusive_ptr.hpp>
#include <QColor>
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/AudioFilterEditor.h>
#include <zelaudiofilterhost/TechnologyType.h>
#include <zelcore/Signals.h>

#include "support/windows/CountingMainLoop.h"

namespace zeltests {

/// A window on the screen with a filter's editor in it, driven as a host does: it has the size that the editor wants,
/// and gives it 25 turns a second.
class EditorStage {
public:
    /// Shows the empty window.
    EditorStage();
    ~EditorStage();

    /// Makes a filter of the first component of a file. Its editor may be null.
    void Load(zelaudiofilterhost::TechnologyType technology, const std::string& path);
    zelaudiofilterhost::AudioFilter& GetFilter() { return *mFilter; }
    /// May be null.
    zelaudiofilterhost::AudioFilterEditor* GetEditor() { return mEditor.get(); }
    /// The widget that the editor is opened in.
    QWidget& GetPlace() { return *mPlace; }

    /// Opens the editor in the place, and gives it its turns from then on.
    bool Open();
    void Close();
    /// Lets go of the editor and the filter.
    void Unload();

    /// Runs the event loop until the condition holds; false when it does not in time.
    bool RunUntil(const std::function<bool()>& condition);
    /// Runs the event loop until the editor had some turns and something but one flat colour is to be seen in its
    /// place.
    bool RunUntilDrawn();
    /// What is on the screen where the editor is.
    QImage Grab() const;
    QColor GrabColour(int x, int y) const;

    /// Timers and watches in the main loop, which are not those of this stage.
    std::size_t CountInMainLoop() const { return mLoop.GetCount(); }
    int GetSizeChanges() const { return mSizeChanges; }

private:
    void SizePlace();

    CountingMainLoop mLoop;
    QWidget mWindow;
    QWidget* mPlace;
    QTimer mTurns;
    int mTurnCount;
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> mFilter;
    boost::intrusive_ptr<zelaudiofilterhost::AudioFilterEditor> mEditor;
    boost::signals::scoped_connection mSizeConnection;
    int mSizeChanges;
};

}  // namespace zeltests
