#include <memory>
#include <optional>
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
const qsizetype kShownCharacters = 40;

// Qt gives a message box its size only now, after anybody else could ask for it.
class BoxWindow final : public QMessageBox {
    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        WindowParent::Centre(*this);
    }
};

struct ButtonKind {
    Button button;
    QMessageBox::StandardButton standard;
    const char* text;
};

// In the order in which they stand for Escape.
constexpr ButtonKind kButtonKinds[] = {{kCancelButton, QMessageBox::Cancel, "$$$/zelui/Cancel=Cancel"},
                                       {kNoAnswerButton, QMessageBox::No, "$$$/zelui/No=No"},
                                       {kOKButton, QMessageBox::Ok, "$$$/zelui/OK=OK"},
                                       {kYesButton, QMessageBox::Yes, "$$$/zelui/Yes=Yes"}};

constexpr int kKnownButtons = kOKButton | kCancelButton | kYesButton | kNoAnswerButton;

int GetShownButtons(int buttons) { return (buttons & kKnownButtons) != 0 ? buttons & kKnownButtons : kOKButton; }

QMessageBox::Icon ToQtIcon(Icon icon) {
    switch (icon) {
        case kIconError:
            return QMessageBox::Critical;
        case kIconCaution:
            return QMessageBox::Warning;
        case kIconNote:
            break;
    }
    return QMessageBox::Information;
}

struct Content {
    const zelcore::ustring& title;
    const zelcore::ustring& message;
    Icon icon;
    int buttons;
    Button defaultButton;
};

class Box final : private OpenDialog {
public:
    Box(const Content& content, HWND parent) : mParent(parent), mWindow(std::make_unique<BoxWindow>()) {
        mWindow->setObjectName(QStringLiteral("MessageBox"));
        mWindow->setAttribute(Qt::WA_QuitOnClose, false);
        mWindow->setWindowTitle(ToWindowTitle(qt::ToQString(content.title)));
        mWindow->setIcon(ToQtIcon(content.icon));
        // Before the texts, which Qt looks at when they are set.
        mWindow->setTextFormat(Qt::PlainText);
        SetMessage(qt::ToQString(content.message));
        AddButtons(content);
    }

    /// Null when the application, not the user, has ended the box.
    std::optional<Button> Run() {
        mWindow->setWindowModality(Qt::ApplicationModal);
        mParent.Attach(*mWindow);
        OpenDialogs::Add(this);
        mWindow->exec();
        OpenDialogs::Remove(this);
        const QAbstractButton* const clicked = mWindow->clickedButton();
        for (const ButtonKind& kind : kButtonKinds) {
            if (clicked != nullptr && clicked == mWindow->button(kind.standard)) return kind.button;
        }
        return std::nullopt;
    }

    Button GetEscape() const { return mEscape; }

private:
    void AddButtons(const Content& content) {
        const int buttons = GetShownButtons(content.buttons);
        for (const ButtonKind& kind : kButtonKinds) {
            if ((buttons & kind.button) == 0) continue;
            QPushButton* const button = mWindow->addButton(kind.standard);
            button->setText(qt::ToQString(zelcore::config::Localize(kind.text)));
            if (mEscape == kNoButton) {
                mEscape = kind.button;
                mWindow->setEscapeButton(button);
                mWindow->setDefaultButton(button);
            }
            if (kind.button == content.defaultButton) mWindow->setDefaultButton(button);
        }
    }

    void SetMessage(const QString& message) {
        const QString shown = CutOff(message, kShownLines, kShownCharacters);
        mWindow->setText(MakeBreakable(shown, kShownCharacters));
        if (shown == message) return;
        mWindow->setDetailedText(CutOff(message, kKeptLines, kShownCharacters));
    }

    bool Cancel() override {
        mWindow->escapeButton()->click();
        return true;
    }
    void Abandon() override { mWindow->hide(); }

    WindowParent mParent;
    std::unique_ptr<BoxWindow> mWindow;
    Button mEscape = kNoButton;
};

}  // namespace

// The boxes are the platform's own and draw themselves; the supplier has nothing to do.
Button Messagebox(const drawbot::SupplierInterface*, const zelcore::ustring& title, const zelcore::ustring& message,
                  int buttons, Button defaultButton, Icon icon, HWND parent, const ButtonHandler& handler, int, int) {
    Button escape = kNoButton;
    std::optional<Button> pressed;
    {
        Box box({title, message, icon, buttons, defaultButton}, parent);
        escape = box.GetEscape();
        pressed = box.Run();
    }
    if (pressed && handler) handler(*pressed);
    return pressed.value_or(escape);
}

void ShowNote(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
              const zelcore::ustring& message, HWND parent) {
    Messagebox(supplier, title, message, kOKButton, kOKButton, kIconNote, parent, ButtonHandler(), 0, 0);
}

void ShowCaution(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
                 const zelcore::ustring& message, HWND parent) {
    Messagebox(supplier, title, message, kOKButton, kOKButton, kIconCaution, parent, ButtonHandler(), 0, 0);
}

}  // namespace messagebox
}  // namespace dialogs
}  // namespace zelui
