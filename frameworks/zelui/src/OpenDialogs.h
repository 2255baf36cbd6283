#pragma once

namespace zelui {

/// A dialog that is on the screen now.
class OpenDialog {
public:
    /// Does what the dialog's own Cancel or close button would; false, and nothing else, when it has none.
    virtual bool Cancel() = 0;
    /// Closes without telling anybody: the application goes.
    virtual void Abandon() = 0;

protected:
    ~OpenDialog() = default;
};

/// The open dialogs in the order in which they were opened. Main thread.
class OpenDialogs {
public:
    static void Add(OpenDialog* dialog);
    static void Remove(OpenDialog* dialog);

    /// Cancels the one opened last of those that can be cancelled.
    static bool CancelInnermost();
    static void AbandonAll();
};

}  // namespace zelui
