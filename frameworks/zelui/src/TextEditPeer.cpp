#include "TextEditPeer.h"

#include <algorithm>

#include <QAbstractButton>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <zelui/QtBridge.h>

#include "CallOut.h"
#include "ControlText.h"
#include "LateGestureEnds.h"
#include "PlainText.h"

namespace zelui {
namespace controls {

namespace {

constexpr QKeySequence::StandardKey kEditingKeys[] = {QKeySequence::Copy,
                                                      QKeySequence::Cut,
                                                      QKeySequence::Paste,
                                                      QKeySequence::Undo,
                                                      QKeySequence::Redo,
                                                      QKeySequence::SelectAll,
                                                      QKeySequence::Delete,
                                                      QKeySequence::DeleteStartOfWord,
                                                      QKeySequence::DeleteEndOfWord,
                                                      QKeySequence::DeleteEndOfLine,
                                                      QKeySequence::DeleteCompleteLine,
                                                      QKeySequence::Backspace,
                                                      QKeySequence::MoveToNextChar,
                                                      QKeySequence::MoveToPreviousChar,
                                                      QKeySequence::MoveToNextWord,
                                                      QKeySequence::MoveToPreviousWord,
                                                      QKeySequence::MoveToStartOfLine,
                                                      QKeySequence::MoveToEndOfLine,
                                                      QKeySequence::SelectNextChar,
                                                      QKeySequence::SelectPreviousChar,
                                                      QKeySequence::SelectNextWord,
                                                      QKeySequence::SelectPreviousWord,
                                                      QKeySequence::SelectStartOfLine,
                                                      QKeySequence::SelectEndOfLine};

}  // namespace

UI_TextEdit::TextEditPeer::TextEditPeer(UI_TextEdit& edit) : ControlPeer(edit) {}

UI_TextEdit::TextEditPeer::~TextEditPeer() { InterruptGesture(); }

bool UI_TextEdit::TextEditPeer::CanBeReleased() const { return !mGesture && ControlPeer::CanBeReleased(); }

QWidget* UI_TextEdit::TextEditPeer::MakeControl(QWidget& parent) {
    TextEditWidget* const field = new TextEditWidget(parent, kMaxLength);
    if (GetTextEdit().mHasMagnifier) field->ShowMagnifier();
    QObject::connect(field, &QLineEdit::textChanged, this, [this] { OnTextChanged(); });
    if (!GetTextEdit().mHasClearButton) return field;
    QObject::connect(&field->AddClearButton(), &QAbstractButton::clicked, this, [this] { OnClear(); });
    return field;
}

void UI_TextEdit::TextEditPeer::OnSync() {
    ControlPeer::OnSync();
    const UI_TextEdit& edit = GetTextEdit();
    GetField().setPlaceholderText(ToControlText(edit.mPlaceholder));
    if (edit.mText != mTakenOver) ShowNodesText();
    GetField().ShowClearButton(!edit.mText.empty());
}

void UI_TextEdit::TextEditPeer::ShowNodesText() {
    mTakenOver = GetTextEdit().mText;
    GetField().ShowText(qt::ToQString(mTakenOver));
}

QString UI_TextEdit::TextEditPeer::GetOwnAccessibleName() const {
    const QString name = ControlPeer::GetOwnAccessibleName();
    return name.isEmpty() ? ToControlText(GetTextEdit().mPlaceholder) : name;
}

QString UI_TextEdit::TextEditPeer::GetOwnToolTip() const {
    if (!GetField().IsCut()) return QString();
    const UI_TextEdit& edit = GetTextEdit();
    return ToToolTip(ToControlText(edit.mText.empty() ? edit.mPlaceholder : edit.mText));
}

// Keys and other events

// A key that goes on repeating what ended the gesture must not press the dialog's button.
bool UI_TextEdit::TextEditPeer::EndsGesture(const QKeyEvent& key) const {
    const bool ending = IsPlain(key) && (IsReturn(key) || key.key() == Qt::Key_Escape);
    return ending && (mGesture || key.isAutoRepeat());
}

bool UI_TextEdit::TextEditPeer::UsesKey(const QKeyEvent& key) const {
    if (EndsGesture(key)) return true;
    const auto matches = [&key](QKeySequence::StandardKey standard) {
        // Qt compares without changing anything, but does not say so.
        return const_cast<QKeyEvent&>(key).matches(standard);
    };
    if (std::any_of(std::begin(kEditingKeys), std::end(kEditingKeys), matches)) return true;
    return IsPlain(key) && !key.text().isEmpty() && key.text().at(0).isPrint();
}

bool UI_TextEdit::TextEditPeer::OnEvent(QEvent& event) {
    switch (event.type()) {
        case QEvent::KeyPress:
            return OnKey(static_cast<QKeyEvent&>(event));
        case QEvent::FocusOut:
            // The context menu of the field is part of the work on it.
            if (static_cast<QFocusEvent&>(event).reason() != Qt::PopupFocusReason) InterruptGesture();
            break;
        case QEvent::EnabledChange:
            if (!GetWidget()->isEnabled()) InterruptGesture();
            break;
        case QEvent::Hide:
            InterruptGesture();
            break;
        case QEvent::ToolTip:
            // Whether the text fits has changed with every key.
            Sync();
            break;
        default:
            break;
    }
    return false;
}

bool UI_TextEdit::TextEditPeer::OnKey(QKeyEvent& key) {
    if (!EndsGesture(key)) return false;
    key.accept();
    const TextEditPtr edit(&GetTextEdit());
    const QPointer<QObject> self(this);
    if (!IsReturn(key)) {
        RevertGesture();
        return true;
    }
    QGuiApplication::inputMethod()->commit();
    if (self) FinishGesture();
    return true;
}

// Gestures

void UI_TextEdit::TextEditPeer::OnTextChanged() {
    // What it is mended to comes as a change of its own.
    if (GetField().MendText()) return;
    const TextEditPtr edit(&GetTextEdit());
    const QPointer<QObject> self(this);
    if (qt::FromQString(GetField().text()) == edit->mText) return;
    if (!mGesture) BeginGesture();
    if (!self || GetWidget() == nullptr) return;
    if (!mGesture) return ShowNodesText();
    TakeText();
    if (self && mGesture && GetWidget() != nullptr && !GetWidget()->hasFocus()) FinishGesture();
}

/// True when the gesture goes on: the host's code may have ended it, or this.
bool UI_TextEdit::TextEditPeer::Tell(const TextEditPtr& edit, Message::ChangeMessage message) {
    const QPointer<QObject> self(this);
    CallOut("A text field's handler", [&edit, message] { edit->TellGesture(message); });
    return self && mGesture;
}

void UI_TextEdit::TextEditPeer::BeginGesture() {
    const TextEditPtr edit(&GetTextEdit());
    const QPointer<QObject> self(this);
    LateGestureEnds::TellAll();
    if (!self || mGesture || GetWidget() == nullptr || !GetWidget()->isEnabled()) return;
    mGesture = Gesture{edit->mText, false};
    Tell(edit, Message::kStart);
}

void UI_TextEdit::TextEditPeer::TakeText() {
    const TextEditPtr edit(&GetTextEdit());
    const zelcore::ustring text = qt::FromQString(GetField().text());
    if (text == edit->mText) return;
    edit->mText = text;
    mTakenOver = text;
    mGesture->changed = true;
    Tell(edit, Message::kChange);
}

void UI_TextEdit::TextEditPeer::FinishGesture() {
    if (!mGesture) return;
    const bool changed = mGesture->changed;
    mGesture.reset();
    Tell(&GetTextEdit(), changed ? Message::kEnd : Message::kCancel);
}

void UI_TextEdit::TextEditPeer::RevertGesture() {
    if (!mGesture) return;
    const TextEditPtr edit(&GetTextEdit());
    const bool changes = edit->mText != mGesture->before;
    edit->SetValue(mGesture->before);
    if (changes && !Tell(edit, Message::kChange)) return;
    mGesture.reset();
    Tell(edit, Message::kCancel);
}

void UI_TextEdit::TextEditPeer::InterruptGesture() {
    if (!mGesture) return;
    const TextEditPtr edit(&GetTextEdit());
    const Message::ChangeMessage message = mGesture->changed ? Message::kEnd : Message::kCancel;
    mGesture.reset();
    LateGestureEnds::Add(edit, [target = edit.get(), message] { target->TellGesture(message); });
}

// Emptying it with the button

void UI_TextEdit::TextEditPeer::OnClear() {
    const TextEditPtr edit(&GetTextEdit());
    const QPointer<QObject> self(this);
    FinishGesture();
    if (!self || GetWidget() == nullptr) return;
    if (edit->UI_WantsKeyboardFocus()) GetWidget()->setFocus(Qt::MouseFocusReason);
    if (!self || GetWidget() == nullptr || !GetWidget()->isEnabled()) return;
    GetField().clear();
    if (self) FinishGesture();
}

}  // namespace controls
}  // namespace zelui
