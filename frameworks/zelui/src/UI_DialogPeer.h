#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QPointer>

#include <zelui/UI_Dialog.h>

#include "OpenDialogs.h"
#include "WindowParent.h"

class QDialog;

namespace zelui {

class DialogWindow;

namespace ui {

/// The Qt side of a dialog: its window, whether it is open, who waits for it. Dialogs of the toolkit derive from it and
/// fill the window. The window goes with the peer or with the application, whichever goes first.
class UI_Dialog::Peer : private OpenDialog {
public:
    /// `parent` is the window it belongs to, or null; `cancellable` lets people close it.
    Peer(HWND parent, bool cancellable);
    virtual ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// Makes `owner` the dialog that this is the Qt side of; it is what the toolkit holds while the dialog is open.
    void SetOwner(UI_Dialog* owner) { mOwner = owner; }
    void SetPostCloseCallback(const PostCloseCallback& callback) { mCallback = callback; }

    void ShowModeless();
    Response RunModal();
    void Close(Response response);
    void IdleUpdate();

    bool IsOpen() const { return mState == State::kOpen; }
    HWND GetPlatformWindow() const;

protected:
    /// The dialog's window; null once the application has gone.
    QDialog* GetWindow() const;
    /// Keeps the dialog for the time of a call that may let go of it; null while it is being made or is going.
    boost::intrusive_ptr<UI_Dialog> Hold() const;
    /// Does what Escape, the window's close button and Application::CancelActiveDialog ask for: closes as cancelled,
    /// unless overridden. False, and nothing else, when that cannot be done now.
    virtual bool DoCancel();

private:
    enum class State { kNew, kOpen, kClosed };
    struct ModalRun;

    bool Cancel() override;
    void Abandon() override;
    void Open(Qt::WindowModality modality);
    void Hide();
    void TellRuns(Response response);
    void WaitForFirstExposure();
    void PaintNow();

    UI_Dialog* mOwner = nullptr;
    boost::intrusive_ptr<UI_Dialog> mOpenReference;
    PostCloseCallback mCallback;
    WindowParent mParent;
    QPointer<DialogWindow> mWindow;
    const bool mCancellable;
    State mState = State::kNew;
    bool mExposureExpected = false;
    /// The response of a closing that no UI_RunModal has returned yet.
    std::optional<Response> mUnclaimed;
    std::vector<ModalRun*> mRuns;
};

}  // namespace ui
}  // namespace zelui
