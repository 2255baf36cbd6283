#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include <boost/intrusive_ptr.hpp>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QWidget>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/TechnologyType.h>
#include <zelaudiofilterhostui/AudioFilterEditorViewBase.h>
#include <zelcore/Signals.h>
#include <zelui/QtBridge.h>

#include "support/windows/CountingMainLoop.h"

namespace zeltests {

/// A host's window on the screen: a line to type in, the view of a filter as the factory makes it, and another line.
/// Driven as a host drives views: the window follows the view's size, passes the keyboard focus into the editor and
/// takes it back when the editor says so.
class ViewStage {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> FilterPtr;
    typedef boost::intrusive_ptr<zelaudiofilterhostui::AudioFilterEditorViewBase> ViewPtr;

    ViewStage();
    ~ViewStage();
    ViewStage(const ViewStage&) = delete;
    ViewStage& operator=(const ViewStage&) = delete;

    /// Makes a filter of the first component of a file. Throws what the filter host throws.
    static FilterPtr LoadFilter(zelaudiofilterhost::TechnologyType technology, const std::string& path);
    /// Has the factory take a filter that belongs to no module for one of a plug-in.
    static void MakeKnown(const zelaudiofilterhost::AudioFilter& filter);

    /// Shows the window, if there is none yet, with the view of `filter` in it; a view that is there goes first.
    void Show(const FilterPtr& filter);
    /// Opens the editor, and gives the view the size that it has then. False when it has none.
    bool Open();

    // The ends of things, each by itself and harmless again.
    void Close();
    void Hide();
    /// The widget that shows the view goes; the view stays.
    void RemoveWidget();
    /// The stage lets go of the view, which goes when nothing shows it any more.
    void LetGoOfView();
    void DestroyWindow();
    /// Everything, in the order in which a careful host does it.
    void Clear();

    zelaudiofilterhostui::AudioFilterEditorViewBase& GetView() { return *mView; }
    QWidget& GetWindow();
    /// What shows the view.
    QWidget& GetContent();
    QLineEdit& GetLineBefore() { return *mBefore; }
    QLineEdit& GetLineAfter() { return *mAfter; }

    /// Runs the event loop until the condition holds; false when it does not in time.
    static bool RunUntil(const std::function<bool()>& condition);
    /// Runs the event loop until something but one flat colour is to be seen where the view is, and the picture has
    /// stayed the same for some turns. One that never comes to rest is drawn too, after a while. False for one that
    /// stays flat.
    bool RunUntilDrawn();
    /// What is on the screen where the view is.
    QImage Grab() const;

    /// A stage that is made while there is another one shares its loop.
    CountingMainLoop& GetLoop() { return mLoop; }
    /// How often the view told that its size changed.
    int GetSizeChanges() const { return mSizeChanges; }
    /// Keys pressed that nobody in the window used.
    int GetUnusedKeys() const;

private:
    class Window;
    class Content;

    void FitWindow();
    void OnFocusChanged(QWidget* now);

    const std::unique_ptr<CountingMainLoop> mOwnLoop;
    CountingMainLoop& mLoop;
    std::unique_ptr<Window> mWindow;
    QLineEdit* mBefore = nullptr;
    QLineEdit* mAfter = nullptr;
    QPointer<Content> mContent;
    ViewPtr mView;
    QMetaObject::Connection mFocusConnection;
    boost::signals::scoped_connection mSizeConnection;
    boost::signals::scoped_connection mAdvanceConnection;
    int mSizeChanges = 0;
};

}  // namespace zeltests
