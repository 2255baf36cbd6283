#include <QAbstractButton>
#include <zelcore/Localizer.h>
#include <zelui/UI_ClearButtonTextEdit.h>

#include "support/ThrowAwayFolder.h"
#include "TextEditStage.h"

namespace zeltests {
namespace {

using zelui::controls::UI_ClearButtonTextEdit;
using zelui::controls::UI_SearchBox;

class UI_ClearButtonTextEditTest : public TextEditStage {
protected:
    UI_ClearButtonTextEditTest() : UI_ClearButtonTextEditTest(new UI_ClearButtonTextEdit) {}
    explicit UI_ClearButtonTextEditTest(UI_ClearButtonTextEdit* edit) : mClearEdit(edit) { Stand(edit); }

    void WatchAsHostsDo() {
        mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) {
            mClearEdit->EditTextChangedInteractively(message);
            Write(*message);
        }));
        mEdit->NotifyWhenChanged(Handler<Changed>([this](ChangedMessage* message) {
            mClearEdit->EditTextChanged(message);
            WriteChanged(*message);
        }));
    }

    QAbstractButton* GetButton() const { return GetField()->findChild<QAbstractButton*>(); }
    void ClickButton() { QTest::mouseClick(GetButton(), Qt::LeftButton); }

    UI_ClearButtonTextEdit* const mClearEdit;
};

class UI_SearchBoxTest : public UI_ClearButtonTextEditTest {
protected:
    UI_SearchBoxTest() : UI_ClearButtonTextEditTest(new UI_SearchBox) {}
};

/// Counts what a class derived from the field gets to hear by its own handlers.
class Listener final : public UI_ClearButtonTextEdit {
public:
    int changes = 0;
    int steps = 0;

    void EditTextChanged(zelui::controls::UI_ControlChangedMessage* message) override {
        UI_ClearButtonTextEdit::EditTextChanged(message);
        ++changes;
    }
    void EditTextChangedInteractively(zelui::controls::UI_InteractiveControlChangedMessage* message) override {
        UI_ClearButtonTextEdit::EditTextChangedInteractively(message);
        ++steps;
    }
};

}  // namespace

TEST_F(UI_ClearButtonTextEditTest, TheButtonIsThereWhileThereIsText) {
    EXPECT_FALSE(GetButton()->isVisible());
    mEdit->SetValue(U("Reverb"));
    EXPECT_TRUE(GetButton()->isVisible());
    EXPECT_TRUE(GetField()->rect().contains(GetButton()->geometry()));
    mEdit->SetValue(U(""));
    EXPECT_FALSE(GetButton()->isVisible());
}

TEST_F(UI_ClearButtonTextEditTest, TypingShowsItByTheFieldsOwnHandlers) {
    const boost::intrusive_ptr<Listener> own = mStage.Add(new Listener, {138, 40, 160, 20});
    ASSERT_TRUE(own->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    QWidget* const field = zelui::qt::GetWidget(*own);
    QTest::keyClicks(field, "a");
    EXPECT_TRUE(field->findChild<QAbstractButton*>()->isVisible());
    EXPECT_EQ(own->steps, 2);
    QTest::keyClick(field, Qt::Key_Backspace);
    EXPECT_FALSE(field->findChild<QAbstractButton*>()->isVisible());
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(own->steps, 4);
    EXPECT_EQ(own->changes, 1);
}

TEST_F(UI_ClearButtonTextEditTest, TypingShowsItWhereTheHostCallsThemFirst) {
    WatchAsHostsDo();
    Type("a");
    EXPECT_TRUE(GetButton()->isVisible());
    Key(Qt::Key_Escape);
    EXPECT_FALSE(GetButton()->isVisible());
}

TEST_F(UI_ClearButtonTextEditTest, WhereTheHostForgetsItIsRightAfterTheNextSetting) {
    Type("a");
    mEdit->UI_SetToolTip(U("Find"));
    EXPECT_TRUE(GetButton()->isVisible());
    Key(Qt::Key_Backspace);
    mEdit->SetValue(U(""));
    EXPECT_FALSE(GetButton()->isVisible());
}

TEST_F(UI_ClearButtonTextEditTest, TheButtonEmptiesTheFieldInAWholeGesture) {
    WatchAsHostsDo();
    mEdit->SetValue(U("Reverb"));
    TakeFocusAway();
    ClickButton();
    EXPECT_EQ(mTold, (Told{"start:Reverb", "change:", "end:", "changed:"}));
    EXPECT_EQ(GetField()->text(), "");
    EXPECT_FALSE(GetButton()->isVisible());
    EXPECT_TRUE(mEdit->UI_HasKeyboardFocus(false));
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(GetValue(), "Reverb");
}

TEST_F(UI_ClearButtonTextEditTest, TypingEndsBeforeTheButtonsGesture) {
    WatchAsHostsDo();
    Type("a");
    ClickButton();
    EXPECT_EQ(mTold, (Told{"start:", "change:a", "end:a", "changed:a", "start:a", "change:", "end:", "changed:"}));
}

TEST_F(UI_ClearButtonTextEditTest, AFieldThatWantsNoFocusDoesNotGetItByTheButton) {
    mEdit->SetWantsKeyboardFocus(false);
    mEdit->SetValue(U("Reverb"));
    TakeFocusAway();
    ClickButton();
    EXPECT_EQ(GetValue(), "");
    EXPECT_FALSE(mEdit->UI_HasKeyboardFocus(true));
}

TEST_F(UI_ClearButtonTextEditTest, ADisabledOneIsNotEmptied) {
    mEdit->SetValue(U("Reverb"));
    mEdit->UI_SetDisabled(true);
    ClickButton();
    EXPECT_EQ(GetValue(), "Reverb");
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_ClearButtonTextEditTest, TheHandlersOfTheButtonMayTakeAllAway) {
    for (const Message::ChangeMessage step : {Message::kStart, Message::kChange, Message::kEnd}) {
        SCOPED_TRACE(step);
        mEdit->NotifyWhenChangedInteractively(Handler<Interactive>([this, step](Message* message) {
            if (message->GetChangeMessage() == step) mStage.GetRoot()->ChildRemove(std::exchange(mEdit, nullptr));
        }));
        mEdit->SetValue(U("Reverb"));
        const QPointer<QWidget> field = GetField();
        ClickButton();
        EXPECT_EQ(mEdit, nullptr);
        EXPECT_TRUE(WaitUntilGone(field));
        Stand(new UI_ClearButtonTextEdit);
    }
}

TEST_F(UI_ClearButtonTextEditTest, TheButtonTakesNoTabStopAndHasAName) {
    mEdit->SetValue(U("Reverb"));
    EXPECT_EQ(GetButton()->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(GetSpokenName(*GetButton()), "Clear");
}

TEST_F(UI_ClearButtonTextEditTest, TheTextDoesNotRunBeneathTheButton) {
    mEdit->SetValue(U("A text that is a good deal wider than the field that it stands in"));
    const QImage with = GetField()->grab(GetButton()->geometry()).toImage();
    mEdit->SetValue(U("A"));
    EXPECT_EQ(GetField()->grab(GetButton()->geometry()).toImage(), with);
}

TEST_F(UI_ClearButtonTextEditTest, EscapeWithTextAndNoGestureIsTheDialogs) {
    mEdit->SetValue(U("Reverb"));
    EventCounter outside(&mStage.GetNodeWidget(), QEvent::KeyPress);
    Key(Qt::Key_Escape);
    EXPECT_EQ(outside.GetCount(), 1);
    EXPECT_EQ(GetValue(), "Reverb");
}

TEST_F(UI_ClearButtonTextEditTest, ComesBackWithItsButtonAfterScrolling) {
    mEdit->SetValue(U("Reverb"));
    mStage.ScrollAwayAndBack(*mEdit);
    EXPECT_TRUE(GetButton()->isVisible());
    ClickButton();
    EXPECT_EQ(GetValue(), "");
}

TEST_F(UI_SearchBoxTest, SaysWhatItIsFor) {
    EXPECT_EQ(GetField()->placeholderText(), "Search");
    EXPECT_EQ(GetAccessibleName(*mEdit), "Search");
    mEdit->SetPlaceholder(U("Find a plug-in"));
    EXPECT_EQ(GetField()->placeholderText(), "Find a plug-in");
}

TEST_F(UI_SearchBoxTest, HasAMagnifierInTheTextsColourBeforeTheText) {
    QPalette red = GetField()->palette();
    red.setColor(QPalette::Text, Qt::red);
    red.setColor(QPalette::Base, Qt::white);
    GetField()->setPalette(red);
    const QImage image = GetField()->grab(QRect(2, 2, 16, 16)).toImage();
    int reds = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.red() > 200 && color.green() < 100) ++reds;
        }
    }
    EXPECT_GT(reds, 10);
    mEdit->SetValue(U("MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM"));
    Key(Qt::Key_End);
    EXPECT_EQ(GetField()->grab(QRect(2, 2, 16, 16)).toImage(), image) << "the text keeps away from it";
}

TEST_F(UI_SearchBoxTest, TheSidesChangePlacesWhereTextRunsFromRightToLeft) {
    mEdit->SetValue(U("a"));
    EXPECT_GT(GetButton()->x(), GetField()->width() / 2);
    GetField()->setLayoutDirection(Qt::RightToLeft);
    EXPECT_LT(GetButton()->x(), GetField()->width() / 2);
    EXPECT_GT(GetField()->textMargins().right(), 0);
}

TEST(UI_SearchBoxWordsTest, AreThoseOfTheUsersLanguage) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path("words.json"), R"({"/zelui/Search": "Suchen", "/zelui/Clear": "Leeren"})");
    zelcore::config::Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(folder.UPath("words.json")));
    ControlStage stage;
    const boost::intrusive_ptr<UI_SearchBox> box = stage.Add(new UI_SearchBox, {10, 10, 160, 20});
    zelcore::config::Localizer::GetInstance().Clear();
    EXPECT_EQ(box->GetPlaceholder(), U("Suchen"));
    EXPECT_EQ(GetSpokenName(*zelui::qt::GetWidget(*box)->findChild<QAbstractButton*>()), "Leeren");
}

}  // namespace zeltests
