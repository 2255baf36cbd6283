#pragma once

#include <memory>

#include <QPointer>

#include <zelcore/PlatformHandles.h>

class QWidget;
class QWindow;

namespace zelui {

/// The window that a dialog belongs to: one of this process, one of another toolkit or process, or none. The dialog
/// stays above it without being owned by it, so that neither must outlive the other. Main thread.
class WindowParent {
public:
    explicit WindowParent(HWND parent);
    ~WindowParent();
    WindowParent(const WindowParent&) = delete;
    WindowParent& operator=(const WindowParent&) = delete;

    /// Puts the hidden `dialog` above the parent. While a modal dialog is open that the parent does
    /// not belong to, that one takes the parent's place: otherwise it would block the new dialog for good.
    void Attach(QWidget& dialog);
    /// Moves `dialog`, of its final size but not on the screen yet, over the middle of what it was attached to, unless
    /// it has been moved before.
    static void Centre(QWidget& dialog);

private:
    QWindow* FindWindow();
    QWindow* MakeForeignWindow();

    HWND mHandle;
    QPointer<QWidget> mWidget;
    std::unique_ptr<QWindow> mForeign;
};

}  // namespace zelui
