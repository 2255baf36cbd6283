#include <QClipboard>
#include <QDropEvent>
#include <QHelpEvent>
#include <QImage>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <stdexcept>
#include <zelui/Theme.h>
#include <zelui/UI_StaticText.h>

#include "../../../frameworks/zelui/src/ColorContrast.h"
#include "TextEditStage.h"

namespace zeltests {
namespace {

class UI_TextEditTest : public TextEditStage {
protected:
    UI_TextEditTest() { Stand(new Edit); }

    static void SetClipboard(const QString& text) { QApplication::clipboard()->setText(text); }

    void Compose(const QString& preedit, const QString& commit = QString()) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(GetField(), &event);
    }

    bool IsOurs(int key, const QString& text = QString(), Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, text);
        event.ignore();
        QCoreApplication::sendEvent(GetField(), &event);
        return event.isAccepted();
    }
};

zelcore::ustring Emoji() { return U("\xF0\x9F\x8E\xB9"); }

}  // namespace

// The value

TEST_F(UI_TextEditTest, SettingItShowsItAndTellsNobody) {
    mEdit->SetValue(U("Reverb"));
    EXPECT_EQ(GetField()->text(), "Reverb");
    mEdit->SetValue(U("Echo"));
    EXPECT_EQ(GetField()->text(), "Echo");
    EXPECT_EQ(GetValue(), "Echo");
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_TextEditTest, WhatIsTooLongIsCutOffBetweenCharacters) {
    zelcore::ustring text(Edit::kMaxLength - 1, 'x');
    mEdit->SetValue(text + Emoji());
    EXPECT_EQ(mEdit->GetValue(), text);
    mEdit->SetValue(zelcore::ustring(5000000, 'y'));
    EXPECT_EQ(mEdit->GetValue(), zelcore::ustring(Edit::kMaxLength, 'y'));
    EXPECT_EQ(GetField()->text().size(), static_cast<qsizetype>(Edit::kMaxLength));
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_TextEditTest, LineEndsAndControlCharactersBecomeBlanksAndHalfCharactersGo) {
    mEdit->SetValue(U("a\r\nb\nc\td\xE2\x80\xA8") + zelcore::ustring(1, 0xD83C) + U("e") + zelcore::ustring(1, 0));
    EXPECT_EQ(GetValue(), "a b c d e ");
    EXPECT_EQ(GetField()->text(), "a b c d e ");
}

TEST_F(UI_TextEditTest, MarkupIsText) {
    mEdit->SetValue(U("<b>R&B</b>"));
    EXPECT_EQ(GetField()->text(), "<b>R&B</b>");
    EXPECT_EQ(GetField()->displayText(), "<b>R&B</b>");
}

TEST_F(UI_TextEditTest, TheProgramCanSetItWhileItIsDisabledAndTheUserCannot) {
    mEdit->UI_SetDisabled(true);
    Type("x");
    QTest::mouseClick(GetField(), Qt::LeftButton);
    EXPECT_EQ(GetValue(), "");
    mEdit->SetValue(U("Fixed"));
    EXPECT_EQ(GetField()->text(), "Fixed");
    EXPECT_TRUE(mTold.empty());
}

// Typing

TEST_F(UI_TextEditTest, TypingIsOneGestureThatReturnEnds) {
    mEdit->SetValue(U("x"));
    Type("ab");
    EXPECT_EQ(mTold, (Told{"start:x", "change:xa", "change:xab"}));
    Key(Qt::Key_Return);
    EXPECT_EQ(mTold, (Told{"start:x", "change:xa", "change:xab", "end:xab", "changed:xab"}));
    mTold.clear();
    Key(Qt::Key_Backspace);
    Key(Qt::Key_Enter);
    EXPECT_EQ(mTold, (Told{"start:xab", "change:xa", "end:xa", "changed:xa"}));
}

TEST_F(UI_TextEditTest, EscapeTakesTheTextOfBeforeBack) {
    mEdit->SetValue(U("old"));
    Type("er");
    Key(Qt::Key_Escape);
    EXPECT_EQ(mTold, (Told{"start:old", "change:olde", "change:older", "change:old", "cancel:old"}));
    EXPECT_EQ(GetField()->text(), "old");
}

TEST_F(UI_TextEditTest, EscapeAfterTheTextCameBackByItselfIsOnlyACancel) {
    Type("a");
    Key(Qt::Key_Backspace);
    Key(Qt::Key_Escape);
    EXPECT_EQ(mTold, (Told{"start:", "change:a", "change:", "cancel:"}));
}

TEST_F(UI_TextEditTest, KeysThatChangeNothingBeginNothing) {
    for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Home, Qt::Key_Return, Qt::Key_Escape}) Key(key);
    TakeFocusAway();
    QCoreApplication::processEvents();
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_TextEditTest, LosingTheFocusEndsTheGestureFromTheMainLoop) {
    Type("a");
    TakeFocusAway();
    EXPECT_EQ(mTold, (Told{"start:", "change:a"}));
    EXPECT_TRUE(WaitToBeTold("changed:a"));
    EXPECT_EQ(mTold, (Told{"start:", "change:a", "end:a", "changed:a"}));
}

TEST_F(UI_TextEditTest, TheEndOfOneFieldComesBeforeTheStartOfTheNext) {
    Type("a");
    const boost::intrusive_ptr<Edit> first = mEdit;
    Stand(new Edit);
    Type("b");
    EXPECT_EQ(mTold, (Told{"start:", "change:a", "end:a", "changed:a", "start:", "change:b"}));
}

TEST_F(UI_TextEditTest, HidingDisablingAndRemovingEndTheGesture) {
    Type("a");
    mEdit->UI_Hide();
    EXPECT_TRUE(WaitToBeTold("changed:a"));
    mEdit->UI_Show(true);
    GiveFocus();
    Type("b");
    mEdit->UI_SetDisabled(true);
    EXPECT_TRUE(WaitToBeTold("changed:ab"));
    mEdit->UI_SetDisabled(false);
    GiveFocus();
    Type("c");
    mStage.GetRoot()->ChildRemove(mEdit);
    EXPECT_TRUE(WaitToBeTold("changed:abc"));
    EXPECT_EQ(GetField(), nullptr);
}

TEST_F(UI_TextEditTest, AFieldThatIsGoneTellsNobody) {
    Type("a");
    mTold.clear();
    mStage.GetRoot()->ChildRemove(std::exchange(mEdit, nullptr));
    QCoreApplication::processEvents();
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_TextEditTest, TheContextMenuIsPartOfTheGesture) {
    Type("a");
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(3, 3), GetField()->mapToGlobal(QPoint(3, 3)));
    QCoreApplication::sendEvent(GetField(), &event);
    QMenu* const menu = GetField()->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    ASSERT_TRUE(ProcessUntil([menu] { return menu->isVisible(); }));
    EXPECT_EQ(mTold, (Told{"start:", "change:a"}));
    menu->close();
    Type("b");
    EXPECT_EQ(mTold, (Told{"start:", "change:a", "change:ab"}));
}

// Undo, pasting, dropping

TEST_F(UI_TextEditTest, UndoAndRedoAreChanges) {
    Type("ab");
    Key(Qt::Key_Return);
    mTold.clear();
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(mTold, (Told{"start:ab", "change:"}));
    Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(GetValue(), "ab");
}

TEST_F(UI_TextEditTest, APasteOfSeveralLinesIsOneLineAndCanBeUndoneByItself) {
    Type("ab");
    SetClipboard("one\r\ntwo\n");
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(GetValue(), "abone two ");
    EXPECT_EQ(GetField()->text(), "abone two ");
    Type("c");
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(GetValue(), "abone two ");
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(GetValue(), "ab");
}

TEST_F(UI_TextEditTest, APasteFromTheContextMenuIsCleanedAndCanBeUndone) {
    Type("a");
    SetClipboard("b\nc");
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(3, 3), GetField()->mapToGlobal(QPoint(3, 3)));
    QCoreApplication::sendEvent(GetField(), &event);
    QMenu* const menu = GetField()->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    for (QAction* const action : menu->actions()) {
        if (action->text().startsWith("&Paste")) action->trigger();
    }
    menu->close();
    EXPECT_EQ(mTold, (Told{"start:", "change:a", "change:ab c"}));
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(GetValue(), "a");
}

TEST_F(UI_TextEditTest, APasteTakesTheSelectionsPlace) {
    mEdit->SetValue(U("Hall Reverb"));
    GetField()->setSelection(0, 4);
    SetClipboard("Plate");
    Key(Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(mTold, (Told{"start:Hall Reverb", "change:Plate Reverb"}));
}

TEST_F(UI_TextEditTest, APasteOfMegabytesIsCutOffBetweenCharacters) {
    Type("a");
    QString text;
    for (int i = 0; i < 1000000; ++i) text += QString::fromUcs4(U"\U0001F3B9");
    SetClipboard(text);
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(mEdit->GetValue().size(), Edit::kMaxLength - 1) << "an odd unit is left, half a character";
    EXPECT_EQ(mTold.size(), 3u);
    Type("zz");
    EXPECT_EQ(mEdit->GetValue().size(), Edit::kMaxLength);
    SetClipboard("more");
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(mEdit->GetValue().size(), Edit::kMaxLength);
    EXPECT_EQ(mTold.size(), 4u) << "what does not fit is no change";
}

TEST_F(UI_TextEditTest, ADropIsCleanedAndAGestureOfItsOwn) {
    TakeFocusAway();
    QMimeData data;
    data.setText("a\nb");
    QDragEnterEvent enter(QPoint(20, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(GetField(), &enter);
    QDropEvent drop(QPointF(20, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(GetField(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(mTold, (Told{"start:", "change:a b", "end:a b", "changed:a b"}));
}

TEST_F(UI_TextEditTest, WhatComesInOtherWaysIsCleanedToo) {
    Type("x");
    Compose(QString(), "a\nb" + QString(QChar(0xD83C)) + "c");
    EXPECT_EQ(GetValue(), "xa bc");
    EXPECT_EQ(GetField()->text(), "xa bc");
    EXPECT_EQ(GetField()->cursorPosition(), 5);
    EXPECT_EQ(mTold, (Told{"start:", "change:x", "change:xa bc"}));
}

// Input methods

TEST_F(UI_TextEditTest, ACompositionIsNoChangeUntilItIsCommitted) {
    Compose("k");
    Compose("ka");
    EXPECT_TRUE(mTold.empty());
    EXPECT_EQ(GetValue(), "");
    mEdit->SetPlaceholder(U("Name"));
    Compose(QString(), "\u304B");
    EXPECT_EQ(mTold, (Told{"start:", "change:\xE3\x81\x8B"}));
}

TEST_F(UI_TextEditTest, ACompositionThatIsGivenUpBeginsNothing) {
    Compose("ka");
    Compose(QString());
    Key(Qt::Key_Return);
    EXPECT_TRUE(mTold.empty());
}

// The node is the truth

TEST_F(UI_TextEditTest, TheHandlerMayPutAnotherTextInItsPlace) {
    mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) {
        Write(*message);
        if (message->GetChangeMessage() != Message::kChange) return;
        zelcore::ustring upper = mEdit->GetValue();
        for (auto& unit : upper) unit = unit >= 'a' && unit <= 'z' ? static_cast<unsigned short>(unit - 32) : unit;
        mEdit->SetValue(upper);
    }));
    mEdit->SetValue(U("AC"));
    GetField()->setCursorPosition(1);
    Type("b");
    EXPECT_EQ(GetField()->text(), "ABC");
    EXPECT_EQ(GetField()->cursorPosition(), 2) << "typing goes on where it was";
    Type("x");
    EXPECT_EQ(GetValue(), "ABXC");
    Key(Qt::Key_Escape);
    EXPECT_EQ(GetValue(), "AC");
    EXPECT_EQ(mTold.front(), "start:AC");
    EXPECT_EQ(mTold.back(), "cancel:AC");
}

TEST_F(UI_TextEditTest, OtherSettingsAtTheStartDoNotLoseWhatWasTyped) {
    mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) {
        Write(*message);
        mEdit->UI_SetToolTip(U("Find"));
        mEdit->SetPlaceholder(U("Find"));
    }));
    Type("a");
    EXPECT_EQ(mTold, (Told{"start:", "change:a"}));
    EXPECT_EQ(GetField()->text(), "a");
}

TEST_F(UI_TextEditTest, ATextSetAtTheStartWins) {
    mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) {
        Write(*message);
        if (message->GetChangeMessage() == Message::kStart) mEdit->SetValue(U("mine"));
    }));
    Type("a");
    Key(Qt::Key_Return);
    EXPECT_EQ(GetField()->text(), "mine");
    EXPECT_EQ(GetValue(), "mine");
    EXPECT_EQ(mTold, (Told{"start:", "cancel:mine"})) << "the user has changed nothing";
}

TEST_F(UI_TextEditTest, DisablingAtTheStartLeavesTheTextAsItWas) {
    mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) {
        Write(*message);
        if (message->GetChangeMessage() == Message::kStart) mEdit->UI_SetDisabled(true);
    }));
    mEdit->SetValue(U("old"));
    Type("a");
    EXPECT_TRUE(WaitToBeTold("cancel:old"));
    EXPECT_EQ(GetField()->text(), "old");
    EXPECT_EQ(mTold, (Told{"start:old", "cancel:old"}));
}

TEST_F(UI_TextEditTest, TheHandlerMayTakeAllAway) {
    for (const Message::ChangeMessage step : {Message::kStart, Message::kChange, Message::kEnd, Message::kCancel}) {
        SCOPED_TRACE(step);
        mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this, step](Message* message) {
            if (message->GetChangeMessage() == step) mStage.GetRoot()->ChildRemove(std::exchange(mEdit, nullptr));
        }));
        const QPointer<QLineEdit> field = GetField();
        Type("a");
        if (field && mEdit) Key(step == Message::kEnd ? Qt::Key_Return : Qt::Key_Escape);
        EXPECT_EQ(mEdit, nullptr);
        EXPECT_TRUE(WaitUntilGone(field.data()));
        Stand(new Edit);
    }
}

TEST_F(UI_TextEditTest, AnExceptionOfTheHandlerLeavesFieldAndNodeTheSame) {
    mEdit->NotifyWhenChangedInteractively(
        Handler<Interactive>([](Message*) { throw std::runtime_error("from the product"); }));
    QTest::ignoreMessage(QtWarningMsg, "A text field's handler threw an exception: from the product");
    QTest::ignoreMessage(QtWarningMsg, "A text field's handler threw an exception: from the product");
    Type("a");
    EXPECT_EQ(GetValue(), "a");
    EXPECT_EQ(GetField()->text(), "a");
}

TEST_F(UI_TextEditTest, TheSelectionStaysWhateverElseIsSet) {
    mEdit->SetValue(U("Hall Reverb"));
    GetField()->setSelection(5, 6);
    mEdit->SetPlaceholder(U("Name"));
    mEdit->UI_SetToolTip(U("Tip"));
    mEdit->SetValue(U("Hall Reverb"));
    mEdit->UI_SetLocalRectF({138, 40, 180, 20});
    EXPECT_EQ(GetField()->selectedText(), "Reverb");
    EXPECT_EQ(GetField()->geometry(), QRect(138, 40, 180, 20));
}

TEST_F(UI_TextEditTest, ALongTextShowsItsBeginningWhileNobodyIsAtWorkOnIt) {
    TakeFocusAway();
    mEdit->SetValue(U("A text that is a good deal wider than the field that it stands in"));
    EXPECT_EQ(GetField()->cursorPosition(), 0);
    GiveFocus();
    EXPECT_EQ(GetField()->cursorPosition(), GetField()->text().size()) << "typing adds to it";
}

// Coming and going

TEST_F(UI_TextEditTest, ComesBackTheSameAfterScrolling) {
    Type("Reverb");
    Key(Qt::Key_Return);
    mEdit->SetPlaceholder(U("Name"));
    mTold.clear();
    mStage.ScrollAwayAndBack(*mEdit);
    EXPECT_EQ(GetField()->text(), "Reverb");
    EXPECT_EQ(GetField()->placeholderText(), "Name");
    EXPECT_TRUE(mTold.empty());
    GiveFocus();
    Type("s");
    EXPECT_EQ(mTold, (Told{"start:Reverb", "change:Reverbs"}));
}

TEST_F(UI_TextEditTest, StaysWhileItHasTheFocus) {
    Type("a");
    const QPointer<QLineEdit> field = GetField();
    mStage.GetArea().verticalScrollBar()->setValue(mStage.GetArea().verticalScrollBar()->maximum());
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(GetField(), field.data());
    EXPECT_TRUE(field->hasFocus());
}

// Keys

TEST_F(UI_TextEditTest, ItsKeysAreNotTheHostsShortcuts) {
    EXPECT_TRUE(IsOurs(Qt::Key_J, "j"));
    EXPECT_TRUE(IsOurs(Qt::Key_J, "J", Qt::ShiftModifier));
    EXPECT_TRUE(IsOurs(Qt::Key_Space, " "));
    EXPECT_TRUE(IsOurs(Qt::Key_Delete));
    EXPECT_TRUE(IsOurs(Qt::Key_Backspace, "\b"));
    EXPECT_TRUE(IsOurs(Qt::Key_Left));
    EXPECT_TRUE(IsOurs(Qt::Key_Left, QString(), Qt::ControlModifier | Qt::ShiftModifier));
    EXPECT_TRUE(IsOurs(Qt::Key_Home));
    EXPECT_TRUE(IsOurs(Qt::Key_Z, "\x1a", Qt::ControlModifier));
    EXPECT_TRUE(IsOurs(Qt::Key_V, "\x16", Qt::ControlModifier));
    EXPECT_TRUE(IsOurs(Qt::Key_A, "\x01", Qt::ControlModifier));
    EXPECT_FALSE(IsOurs(Qt::Key_S, "\x13", Qt::ControlModifier));
    EXPECT_FALSE(IsOurs(Qt::Key_F4));
    EXPECT_FALSE(IsOurs(Qt::Key_Up));
    EXPECT_FALSE(IsOurs(Qt::Key_Tab, "\t"));
}

TEST_F(UI_TextEditTest, ReturnAndEscapeAreItsKeysOnlyDuringAGesture) {
    EventCounter outside(&mStage.GetNodeWidget(), QEvent::KeyPress);
    EXPECT_FALSE(IsOurs(Qt::Key_Return, "\r"));
    EXPECT_FALSE(IsOurs(Qt::Key_Escape, "\x1b"));
    Key(Qt::Key_Return);
    Key(Qt::Key_Escape);
    EXPECT_EQ(outside.GetCount(), 2) << "a dialog gets them";
    Type("a");
    EXPECT_TRUE(IsOurs(Qt::Key_Return, "\r"));
    EXPECT_TRUE(IsOurs(Qt::Key_Escape, "\x1b"));
    SendKey(GetField(), QEvent::KeyPress, Qt::Key_Return, false, Qt::ControlModifier);
    EXPECT_EQ(outside.GetCount(), 3) << "a shortcut";
    Key(Qt::Key_Return);
    Type("b");
    Key(Qt::Key_Escape);
    EXPECT_EQ(outside.GetCount(), 3);
    Key(Qt::Key_Escape);
    EXPECT_EQ(outside.GetCount(), 4);
}

TEST_F(UI_TextEditTest, AReturnThatGoesOnRepeatingPressesNoButtonOfTheDialog) {
    EventCounter outside(&mStage.GetNodeWidget(), QEvent::KeyPress);
    Type("a");
    SendKey(GetField(), QEvent::KeyPress, Qt::Key_Return);
    SendKey(GetField(), QEvent::KeyPress, Qt::Key_Return, true);
    EXPECT_EQ(outside.GetCount(), 0);
    EXPECT_EQ(mTold, (Told{"start:", "change:a", "end:a", "changed:a"}));
}

TEST_F(UI_TextEditTest, TabGoesOnToTheNextAndSelectsThere) {
    const boost::intrusive_ptr<Edit> next = mStage.Add(new Edit, {138, 40, 160, 20});
    next->SetValue(U("next"));
    Key(Qt::Key_Tab);
    EXPECT_TRUE(next->UI_HasKeyboardFocus(false));
    EXPECT_EQ(ControlStage::GetWidget<QLineEdit>(*next)->selectedText(), "next");
    QTest::keyClick(zelui::qt::GetWidget(*next), Qt::Key_Backtab);
    EXPECT_TRUE(mEdit->UI_HasKeyboardFocus(false));
}

TEST_F(UI_TextEditTest, AClickGivesItTheFocusUnlessItWantsNone) {
    TakeFocusAway();
    QTest::mouseClick(GetField(), Qt::LeftButton);
    EXPECT_TRUE(mEdit->UI_HasKeyboardFocus(false));
    TakeFocusAway();
    mEdit->SetWantsKeyboardFocus(false);
    QTest::mouseClick(GetField(), Qt::LeftButton);
    EXPECT_FALSE(mEdit->UI_HasKeyboardFocus(false));
}

// Names

TEST_F(UI_TextEditTest, ScreenReadersKnowItByItsNameTheTextBeforeItOrItsPlaceholder) {
    mEdit->SetPlaceholder(U("Search"));
    EXPECT_EQ(GetAccessibleName(*mEdit), "Search");
    mStage.Add(new zelui::controls::UI_StaticText, {10, 40, 100, 20})->SetValue(U("Find:"));
    Stand(new Edit);
    mEdit->SetPlaceholder(U("Search"));
    EXPECT_EQ(GetAccessibleName(*mEdit), "Find:");
    mEdit->UI_SetAccessibleName(U("Filter"));
    EXPECT_EQ(GetAccessibleName(*mEdit), "Filter");
}

TEST_F(UI_TextEditTest, ThePlaceholderIsShownOnlyWhileItIsEmpty) {
    const QImage empty = GetField()->grab().toImage();
    mEdit->SetPlaceholder(U("Name\nof it"));
    EXPECT_EQ(GetField()->placeholderText(), "Name of it");
    EXPECT_NE(GetField()->grab().toImage(), empty);
    mEdit->SetValue(U("a"));
    const QImage with = GetField()->grab().toImage();
    mEdit->SetPlaceholder(U(""));
    EXPECT_EQ(GetField()->grab().toImage(), with);
}

TEST_F(UI_TextEditTest, WhatDoesNotFitIsInTheToolTip) {
    const auto askForToolTip = [this] {
        QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), GetField()->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(GetField(), &event);
        return GetField()->toolTip();
    };
    Type("short");
    EXPECT_EQ(askForToolTip(), "");
    Type(" and then a good deal longer than the field");
    EXPECT_TRUE(askForToolTip().contains("longer than"));
    mEdit->SetValue(U(""));
    EXPECT_EQ(GetField()->toolTip(), "");
    mEdit->SetPlaceholder(U("A placeholder that is wider than the field, too"));
    EXPECT_TRUE(GetField()->toolTip().contains("placeholder"));
    mEdit->UI_SetToolTip(U("Set"));
    EXPECT_TRUE(askForToolTip().contains("Set"));
}

TEST_F(UI_TextEditTest, ItsEdgeCanBeSeenOnBothThemes) {
    using zelui::ui::Theme;
    TakeFocusAway();
    for (const Theme::Choice choice : {Theme::kDark, Theme::kLight}) {
        Theme::Get().Choose(choice);
        const QColor window = GetField()->palette().color(QPalette::Active, QPalette::Window);
        const QImage picture = GetField()->grab().toImage();
        EXPECT_GE(zelui::GetContrast(picture.pixelColor(0, picture.height() / 2), window), 1.45) << choice;
    }
    Theme::Get().Choose(Theme::kSystem);
}

}  // namespace zeltests
