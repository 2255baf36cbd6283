#include <memory>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <zelcore/Localizer.h>
#include <zelui/MessageBox.h>
#include <zelui/QtBridge.h>

#include "OpenDialogs.h"
#include "PlainText.h"
#include "WindowParent.h"

namespace zelui {
namespace dialogs {
namespace messagebox {

namespace {

// What a box shows at once; the whole of a longer message is a click away.
const qsizetype kShownLines = 16;
const qsizetype kKeptLines = 2000;
// About what stands in one line; a word longer than that has none to break at.
const qsizetype kLineWidth = 40;

// Qt gives a message box its size only now, after anybody else could ask for it.
class BoxWindow final : public QMessageBox {
    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        WindowParent::Centre(*this);
    }
};

class Box final : private OpenDialog {
public:
    Box(QMessageBox::Icon icon, const zelcore::ustring& title, const zelcore::ustring& message, HWND parent)
        : mParent(parent), mWindow(std::make_unique<BoxWindow>()) {
        mWindow->setObjectName(QStringLiteral("MessageBox"));
        mWindow->setAttribute(Qt::WA_QuitOnClose, false);
        mWindow->setWindowTitle(ToWindowTitle(qt::ToQString(title)));
        mWindow->setIcon(icon);
        // Before the texts, which Qt looks at when they are set.
        mWindow->setTextFormat(Qt::PlainText);
        SetMessage(qt::ToQString(message));
        QPushButton* const ok = mWindow->addButton(QMessageBox::Ok);
        ok->setText(qt::ToQString(zelcore::config::Localize("$$$/zelui/OK=OK")));
        mWindow->setDefaultButton(ok);
        mWindow->setEscapeButton(ok);
    }

    void Run() {
        mWindow->setWindowModality(Qt::ApplicationModal);
        mParent.Attach(*mWindow);
        OpenDialogs::Add(this);
        mWindow->exec();
        OpenDialogs::Remove(this);
    }

private:
    void SetMessage(const QString& message) {
        const QString shown = CutOff(message, kShownLines, kLineWidth);
        mWindow->setText(MakeBreakable(shown, kLineWidth));
        if (shown == message) return;
        mWindow->setDetailedText(CutOff(message, kKeptLines, kLineWidth));
    }

    bool Cancel() override {
        mWindow->reject();
        return true;
    }
    void Abandon() override { mWindow->hide(); }

    WindowParent mParent;
    std::unique_ptr<BoxWindow> mWindow;
};

}  // namespace

// The boxes are the platform's own and draw themselves; the supplier has nothing to do.
void ShowNote(const drawbot::SupplierInterface*, const zelcore::ustring& title, const zelcore::ustring& message,
              HWND parent) {
    Box(QMessageBox::Information, title, message, parent).Run();
}

void ShowCaution(const drawbot::SupplierInterface*, const zelcore::ustring& title, const zelcore::ustring& message,
                 HWND parent) {
    Box(QMessageBox::Warning, title, message, parent).Run();
}

}  // namespace messagebox
}  // namespace dialogs
}  // namespace zelui
