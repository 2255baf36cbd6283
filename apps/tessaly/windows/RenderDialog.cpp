#include "RenderDialog.h"

#include <QEventLoop>

#include "LocalText.h"

namespace tessaly {

namespace {

constexpr int kLookEvery = 40;
constexpr int kSteps = 1000;

}  // namespace

RenderDialog::RenderDialog(RenderJob& job, const QString& fileName, QWidget* parent)
    : QProgressDialog(parent), mJob(job) {
    setObjectName(QStringLiteral("RenderDialog"));
    setWindowTitle(LocalText("$$$/tessaly/Render/Title=Render"));
    setLabelText(LocalText("$$$/tessaly/Render/Label=Rendering @0", fileName));
    setCancelButtonText(LocalText("$$$/tessaly/Cancel=Cancel"));
    setRange(0, kSteps);
    setWindowModality(Qt::WindowModal);
    setMinimumDuration(0);
    // It goes when the thread has ended, not when a button was pressed.
    setAutoReset(false);
    setAutoClose(false);
    connect(this, &QProgressDialog::canceled, this, [this] { mJob.Cancel(); });
}

void RenderDialog::Wait() {
    const int timer = startTimer(kLookEvery);
    show();
    QEventLoop loop;
    while (mJob.GetState() == RenderJob::kRunning) loop.processEvents(QEventLoop::WaitForMoreEvents);
    killTimer(timer);
    hide();
}

void RenderDialog::timerEvent(QTimerEvent* event) {
    QProgressDialog::timerEvent(event);
    setValue(static_cast<int>(mJob.GetProgress() * (kSteps - 1)));
}

}  // namespace tessaly
