#include "UI_DialogPeer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QThread>
#include <QWindow>
#include <utility>

#include <zelui/QtBridge.h>

#include "DialogWindow.h"
#include "InputHold.h"

namespace zelui {
namespace ui {

namespace {

// What one update may cost the work that calls it: a flood of posted calls or input is then left for the next one.
const int kIdleLimitMs = 30;
// How long the first update after showing waits for the window system to put the window up; it takes a few
// milliseconds where there is one, and without the wait the text about to be read would not be painted.
const int kFirstExposureLimitMs = 250;

}  // namespace

/// One UI_RunModal under way.
struct UI_Dialog::Peer::ModalRun {
    QEventLoop loop;
    std::optional<Response> response;
};

UI_Dialog::Peer::Peer(HWND parent, bool cancellable) : mParent(parent), mCancellable(cancellable) {
    mWindow = new DialogWindow(cancellable, [this](bool accepted) {
        if (accepted)
            Close(UI_DialogViewContainer::kResponseOK);
        else
            Cancel();
    });
}

UI_Dialog::Peer::~Peer() {
    OpenDialogs::Remove(this);
    if (!mWindow) return;
    mWindow->Silence();
    mWindow->hide();
    // Later, because this may be inside the click or key that closed it.
    mWindow->deleteLater();
}

void UI_Dialog::Peer::ShowModeless() {
    if (!IsOpen()) return Open(Qt::NonModal);
    if (!mWindow) return;
    mWindow->raise();
    mWindow->activateWindow();
}

void UI_Dialog::Peer::Open(Qt::WindowModality modality) {
    if (!mWindow) return;
    // Qt takes a new modality over only when the window is shown again.
    if (IsOpen()) mWindow->hide();
    if (!IsOpen()) OpenDialogs::Add(this);
    mState = State::kOpen;
    mUnclaimed.reset();
    mOpenReference = mOwner;
    mWindow->setWindowModality(modality);
    mParent.Attach(*mWindow);
    mExposureExpected = true;
    mWindow->show();
    mWindow->activateWindow();
}

UI_Dialog::Response UI_Dialog::Peer::RunModal() {
    const boost::intrusive_ptr<UI_Dialog> alive(mOwner);
    if (mUnclaimed) return *std::exchange(mUnclaimed, std::nullopt);
    if (!IsOpen() || mRuns.empty()) Open(Qt::ApplicationModal);
    ModalRun run;
    mRuns.push_back(&run);
    run.loop.exec();
    // Without a response the loop ended because the whole application is told to.
    if (!run.response) Close(UI_DialogViewContainer::kResponseCancel);
    std::erase(mRuns, &run);
    return run.response.value_or(UI_DialogViewContainer::kResponseCancel);
}

void UI_Dialog::Peer::Close(Response response) {
    if (mState == State::kNew) {
        mState = State::kClosed;
        mUnclaimed = response;
    }
    if (!IsOpen()) return;
    const boost::intrusive_ptr<UI_Dialog> alive = std::move(mOpenReference);
    Hide();
    TellRuns(response);
    const PostCloseCallback callback = mCallback;
    // No dialog has a handling of its own that the callback's answer could spare.
    if (callback) callback(response);
}

void UI_Dialog::Peer::Hide() {
    mState = State::kClosed;
    mOpenReference.reset();
    OpenDialogs::Remove(this);
    if (mWindow) mWindow->hide();
}

void UI_Dialog::Peer::TellRuns(Response response) {
    bool told = false;
    for (ModalRun* run : mRuns) {
        // One with a response only waits for a loop inside it to end; what happens since is not its business.
        if (run->response) continue;
        run->response = response;
        run->loop.quit();
        told = true;
    }
    if (!told) mUnclaimed = response;
}

bool UI_Dialog::Peer::Cancel() { return mCancellable && IsOpen() && DoCancel(); }

bool UI_Dialog::Peer::DoCancel() {
    Close(UI_DialogViewContainer::kResponseCancel);
    return true;
}

void UI_Dialog::Peer::Abandon() {
    const boost::intrusive_ptr<UI_Dialog> alive = std::move(mOpenReference);
    Hide();
}

void UI_Dialog::Peer::IdleUpdate() {
    const boost::intrusive_ptr<UI_Dialog> alive(mOwner);
    if (!IsOpen() || !mWindow) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, kIdleLimitMs);
        return;
    }
    {
        const InputHold hold(*mWindow);
        WaitForFirstExposure();
        QCoreApplication::processEvents(QEventLoop::AllEvents, kIdleLimitMs);
    }
    PaintNow();
}

void UI_Dialog::Peer::WaitForFirstExposure() {
    if (!std::exchange(mExposureExpected, false)) return;
    QElapsedTimer time;
    time.start();
    while (IsOpen() && mWindow && !mWindow->windowHandle()->isExposed() && !time.hasExpired(kFirstExposureLimitMs)) {
        QThread::msleep(1);
        QCoreApplication::processEvents(QEventLoop::AllEvents, kIdleLimitMs);
    }
}

void UI_Dialog::Peer::PaintNow() {
    if (!IsOpen() || !mWindow) return;
    QCoreApplication::sendPostedEvents(mWindow, QEvent::LayoutRequest);
    // Qt holds repaints back to one a frame; the caller may not come back for many.
    QEvent update(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(mWindow, &update);
}

HWND UI_Dialog::Peer::GetPlatformWindow() const { return IsOpen() && mWindow ? qt::GetWindowHandle(mWindow) : nullptr; }

QDialog* UI_Dialog::Peer::GetWindow() const { return mWindow; }

boost::intrusive_ptr<UI_Dialog> UI_Dialog::Peer::Hold() const {
    // The first reference to a dialog that nobody holds would be its last.
    const bool isHeld = mOwner != nullptr && mOwner->GetRefCount() > 0;
    return isHeld ? boost::intrusive_ptr<UI_Dialog>(mOwner) : boost::intrusive_ptr<UI_Dialog>();
}

}  // namespace ui
}  // namespace zelui
