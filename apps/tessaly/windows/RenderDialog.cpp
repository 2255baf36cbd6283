#include "RenderDialog.h"

#include <QEventLoop>
#include <QProgressBar>
#include <QPushButton>
#include <zelui/QtAccessibility.h>

#include "LocalText.h"

namespace tessaly {

namespace {

constexpr int kShowEvery = 40;
constexpr int kSteps = 1000;

}  // namespace

RenderDialog::RenderDialog(RenderJob& job, const QString& fileName, QWidget* parent)
    : QProgressDialog(LocalText("$$$/tessaly/Render/Label=Rendering @0", fileName),
                      LocalText("$$$/tessaly/Cancel=Cancel"), 0, kSteps, parent),
      mJob(job),
      // Qt's own: with another one the Escape key has two meanings, and so none.
      mCancelButton(findChild<QPushButton*>()) {
    setObjectName(QStringLiteral("RenderDialog"));
    setWindowTitle(LocalText("$$$/tessaly/Render/Title=Render"));
    zelui::qt::SetAccessibleName(*findChild<QProgressBar*>(), labelText());
    setWindowModality(Qt::WindowModal);
    setMinimumDuration(0);
    // It goes when the thread has ended, not when a button was pressed.
    setAutoReset(false);
    setAutoClose(false);
    // Its own answer is to hide, and what is behind it could be changed under the thread.
    disconnect(this, &QProgressDialog::canceled, this, nullptr);
    connect(this, &QProgressDialog::canceled, this, [this] { reject(); });
}

void RenderDialog::Wait() {
    const int timer = startTimer(kShowEvery);
    show();
    QEventLoop loop;
    while (mJob.GetState() == RenderJob::kRunning) loop.processEvents(QEventLoop::WaitForMoreEvents);
    killTimer(timer);
    hide();
}

void RenderDialog::reject() {
    mJob.Cancel();
    mCancelButton->setEnabled(false);
}

void RenderDialog::timerEvent(QTimerEvent* event) {
    QProgressDialog::timerEvent(event);
    setValue(static_cast<int>(mJob.GetProgress() * (kSteps - 1)));
}

}  // namespace tessaly
