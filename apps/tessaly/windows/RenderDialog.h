#pragma once

#include <memory>
#include <QProgressDialog>
#include <string>

#include "RenderJob.h"

class QPushButton;

namespace tessaly {

/// Shows how far a render is, and cancels it. Main thread.
class RenderDialog final : public QProgressDialog {
public:
    /// The job outlives the dialog.
    RenderDialog(RenderJob& job, const QString& fileName, QWidget* parent);

    /// Returns when the render has ended, whichever way.
    void Wait();

    /// The user does not want it: it goes once the render has ended, not before.
    void reject() override;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    RenderJob& mJob;
    QPushButton* const mCancelButton;
};

}  // namespace tessaly
