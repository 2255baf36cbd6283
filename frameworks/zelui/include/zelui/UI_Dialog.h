#pragma once

#include <memory>

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <zelcore/PlatformHandles.h>
#include <zelcore/RefCountedObject.h>
#include <zelcore/ustring.h>

#include <zelui/UI_DialogViewContainer.h>

namespace zelui {
namespace ui {

/// A dialog: a window with a title, shown beside the host's windows (modeless) or on top of them until it closes
/// (modal). Main thread only. Reference-counted; closing hides the window, the last reference destroys it. The toolkit
/// keeps its own reference while the dialog is open.
class ZELUI_API UI_Dialog : public zelcore::utility::RefCountedObject {
public:
    /// How a dialog was left.
    typedef UI_DialogViewContainer::Response Response;
    /// Told how the dialog was left, after it has closed.
    typedef boost::function<bool(Response)> PostCloseCallback;

    /// Sets what runs once each time the dialog has closed, however it was closed. Its result tells whether the
    /// callback has dealt with the response; false leaves it to the dialog's own handling. A callback may let go of the
    /// dialog.
    void SetPostCloseCallback(const PostCloseCallback& callback);

    /// Shows the dialog and returns at once. Showing an open dialog raises it.
    void UI_ShowModeless();
    /// Shows the dialog and runs the main loop until it closes; returns its response. A dialog that was closed before
    /// it was run returns at once with that response.
    Response UI_RunModal();
    /// Closes the dialog with `response`; again, or before it was shown, is harmless.
    void UI_Close(Response response);
    /// Lets pending input, painting and posted calls happen, without waiting: for work on the main thread that must
    /// keep the dialog alive. What the dialog shows is on the screen when it returns; only the first update after
    /// showing waits for that, a quarter of a second at most. Input to windows other than this one and those opened
    /// from it is thrown away meanwhile, so that nobody starts the same work again inside itself.
    void UI_IdleUpdate();

    /// Whether it can be seen, modal or not.
    bool UI_IsOpen() const;
    /// The dialog's window, for use as another window's parent; null while it has none.
    HWND UI_GetPlatformWindow() const;

protected:
    /// The Qt side of a dialog; defined and known only inside the toolkit.
    class Peer;

    /// With the toolkit's side of the dialog, which it owns.
    UI_Dialog(std::unique_ptr<Peer> peer);
    ~UI_Dialog() override;
    /// The toolkit's side of the dialog.
    Peer& GetPeer() const { return *mPeer; }

private:
    std::unique_ptr<Peer> mPeer;
};

}  // namespace ui
}  // namespace zelui
