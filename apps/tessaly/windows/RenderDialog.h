#pragma once

#include <memory>
#include <QProgressDialog>
#include <string>

#include "RenderJob.h"

namespace tessaly {

/// Shows how far a render is, and cancels it. Main thread.
class RenderDialog final : public QProgressDialog {
public:
    /// The job outlives the dialog.
    RenderDialog(RenderJob& job, const QString& fileName, QWidget* parent);

    /// Returns when the render has ended, whichever way.
    void Wait();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    RenderJob& mJob;
};

}  // namespace tessaly
