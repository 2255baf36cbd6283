#include "DialogWindow.h"

#include "WindowParent.h"

namespace zelui {

namespace {

Qt::WindowFlags GetFlags(bool closable) {
    const Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    return closable ? flags | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint : flags;
}

}  // namespace

DialogWindow::DialogWindow(bool closable, const Asked& asked) : QDialog(nullptr, GetFlags(closable)), mAsked(asked) {
    // A host that ends with its last window means its own windows.
    setAttribute(Qt::WA_QuitOnClose, false);
}

// Both call a copy: what is asked may silence or even let go of this window.
void DialogWindow::accept() {
    const Asked asked = mAsked;
    if (asked) asked(true);
}

void DialogWindow::reject() {
    const Asked asked = mAsked;
    if (asked) asked(false);
}

void DialogWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    WindowParent::Centre(*this);
}

void DialogWindow::Silence() { mAsked = nullptr; }

}  // namespace zelui
