#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QComboBox>
#include <stdexcept>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_Popup.h>

#include "ControlStage.h"

namespace zeltests {
namespace {

using zelui::controls::UI_ControlChangedMessage;
using zelui::controls::UI_ControlView;
using zelui::controls::UI_Popup;

const zelcore::geom::RectF kFrame = {10, 10, 120, 20};

class UI_PopupTest : public ::testing::Test {
protected:
    UI_PopupTest() { AddPopup(false); }

    void AddPopup(bool tellsSameChoice) {
        mPopup = mStage.Add(new UI_Popup(zelui::controls::kPopupChoice, tellsSameChoice), kFrame);
        for (const char* const item : {"(None)", "", "Left", "Right", "Left"}) mPopup->AddItem(U(item));
        mPopup->NotifyWhenChanged(Handler<UI_ControlView::ChangedFunction>(
            [this](UI_ControlChangedMessage*) { mTold.push_back(mPopup->GetValue()); }));
    }

    QComboBox* GetCombo() const { return ControlStage::GetWidget<QComboBox>(*mPopup); }
    void GiveFocus() { ASSERT_TRUE(mPopup->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram)); }

    bool IsOpen() const { return GetCombo()->view()->isVisible(); }
    void Open() {
        QTest::mouseClick(GetCombo(), Qt::LeftButton);
        ASSERT_TRUE(ProcessUntil([this] { return IsOpen(); }));
    }
    /// Opens the list and chooses by keys, as a mouse release right after opening is taken for that of the opening.
    void ChooseFromList(int index) {
        Open();
        QAbstractItemView* const view = GetCombo()->view();
        QTest::keyClick(view, Qt::Key_Home);
        for (int i = 0; i < index; ++i) QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Return);
    }

    ControlStage mStage;
    boost::intrusive_ptr<UI_Popup> mPopup;
    std::vector<int> mTold;
};

typedef std::vector<int> Values;

}  // namespace

// Items and values

TEST_F(UI_PopupTest, ItemsMayReadTheSameOrBeBlank) {
    EXPECT_EQ(mPopup->GetItemCount(), 5);
    EXPECT_EQ(mPopup->AddItem(U("Left")), 5);
    mPopup->SetValue(4);
    EXPECT_EQ(mPopup->GetValue(), 4);
    EXPECT_EQ(GetCombo()->currentIndex(), 4);
    EXPECT_EQ(GetCombo()->currentText(), "Left");
    mPopup->SetValue(1);
    EXPECT_EQ(GetCombo()->currentText(), "");
    EXPECT_EQ(mPopup->GetItemText(2), U("Left"));
    EXPECT_EQ(mPopup->GetItemText(-1), zelcore::ustring());
    EXPECT_EQ(mPopup->GetItemText(6), zelcore::ustring());
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_PopupTest, AValueThatIsNotThereChangesNothing) {
    mPopup->SetValue(3);
    mPopup->SetValueString(U("Bypass"), false);
    mPopup->SetValue(5);
    mPopup->SetValue(-1);
    EXPECT_EQ(mPopup->GetValue(), 3);
    EXPECT_EQ(mPopup->GetValueString(), U("Bypass"));
}

TEST_F(UI_PopupTest, TheValueStaysItsItemWhenOthersAreRemoved) {
    mPopup->SetValue(3);
    mPopup->RemoveItem(4);
    mPopup->RemoveItem(0);
    mPopup->RemoveItem(17);
    mPopup->RemoveItem(-1);
    EXPECT_EQ(mPopup->GetValue(), 2);
    EXPECT_EQ(GetCombo()->currentText(), "Right");
    mPopup->RemoveItem(2);
    EXPECT_EQ(mPopup->GetValue(), 0);
    EXPECT_EQ(GetCombo()->currentIndex(), 0);
    mPopup->RemoveAllItems();
    EXPECT_EQ(mPopup->GetValue(), 0);
    EXPECT_EQ(mPopup->GetValueString(), zelcore::ustring());
    EXPECT_EQ(GetCombo()->count(), 0);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_PopupTest, WithoutItemsItIsHarmless) {
    mPopup->RemoveAllItems();
    GiveFocus();
    QTest::keyClick(GetCombo(), Qt::Key_Down);
    QTest::keyClick(GetCombo(), Qt::Key_Space);
    QTest::mouseClick(GetCombo(), Qt::LeftButton);
    EXPECT_TRUE(mTold.empty());
    mPopup->AddItem(U("First"));
    EXPECT_EQ(GetCombo()->currentText(), "First");
}

TEST_F(UI_PopupTest, ItemTextsAreOneLineOfBoundedLengthAndNothingElse) {
    mPopup->AddItem(U("R&B <b>bold</b>\nnext"));
    mPopup->AddItem(zelcore::ustring(1000000, 'x'));
    EXPECT_EQ(GetCombo()->itemText(5), "R&B <b>bold</b> next");
    EXPECT_LT(GetCombo()->itemText(6).size(), 3000);
}

// A text that is no item

TEST_F(UI_PopupTest, AShownTextStandsInPlaceOfTheItemWhileTheValueStays) {
    mPopup->SetValueString(U("Bypass"), false);
    EXPECT_EQ(mPopup->GetValue(), 0);
    EXPECT_EQ(mPopup->GetValueString(), U("Bypass"));
    EXPECT_EQ(mPopup->GetItemText(0), U("(None)"));
    EXPECT_EQ(GetCombo()->currentText(), "Bypass");
    const QImage bypass = GetCombo()->grab().toImage();
    mPopup->SetValue(0);
    EXPECT_EQ(mPopup->GetValueString(), U("(None)"));
    EXPECT_NE(GetCombo()->grab().toImage(), bypass);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_PopupTest, AShownTextIsToldOnRequest) {
    mPopup->SetValueString(U("Bypass"), true);
    EXPECT_EQ(mTold, Values{0});
}

TEST_F(UI_PopupTest, AShownTextIsNoItemOfTheOpenList) {
    mPopup->SetValueString(U("Bypass"), false);
    const QImage closed = GetCombo()->grab().toImage();
    Open();
    EXPECT_EQ(GetCombo()->view()->model()->index(0, 0).data().toString(), "(None)");
    EXPECT_EQ(GetCombo()->count(), 5);
    QTest::keyClick(GetCombo()->view(), Qt::Key_Escape);
    EXPECT_TRUE(ProcessUntil([this] { return !IsOpen(); }));
    EXPECT_EQ(GetCombo()->currentText(), "Bypass");
    mStage.GetArea().setFocus();
    EXPECT_EQ(GetCombo()->grab().toImage(), closed);
}

TEST_F(UI_PopupTest, AShownTextFollowsTheValueWhenItemsAreRemoved) {
    mPopup->SetValue(3);
    mPopup->SetValueString(U("Bypass"), false);
    mPopup->RemoveItem(0);
    EXPECT_EQ(GetCombo()->currentText(), "Bypass");
    EXPECT_EQ(GetCombo()->itemText(1), "Left");
    mPopup->SetValue(0);
    EXPECT_EQ(GetCombo()->itemText(2), "Right");
}

TEST_F(UI_PopupTest, AChoiceTakesTheShownTextAway) {
    mPopup->SetValueString(U("Bypass"), false);
    ChooseFromList(2);
    EXPECT_EQ(mTold, Values{2});
    EXPECT_EQ(mPopup->GetValueString(), U("Left"));
    EXPECT_EQ(GetCombo()->currentText(), "Left");
    EXPECT_EQ(GetCombo()->itemText(0), "(None)");
}

TEST_F(UI_PopupTest, AChoiceThatIsNotToldLeavesTheShownText) {
    mPopup->SetValueString(U("Bypass"), false);
    ChooseFromList(0);
    EXPECT_TRUE(mTold.empty());
    EXPECT_EQ(mPopup->GetValueString(), U("Bypass"));
    EXPECT_TRUE(ProcessUntil([this] { return GetCombo()->currentText() == "Bypass"; }));
}

// Choosing

TEST_F(UI_PopupTest, ChoosingWithTheMouseTellsTheValue) {
    Open();
    QAbstractItemView* const view = GetCombo()->view();
    const QPoint item = view->visualRect(view->model()->index(3, 0)).center();
    // Right after opening a release counts as that of the click which opened the list.
    EXPECT_TRUE(ProcessUntil([&] {
        if (!IsOpen()) return true;
        QTest::mouseMove(view->viewport(), item);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, item);
        return !IsOpen();
    }));
    EXPECT_EQ(mTold, Values{3});
    EXPECT_EQ(mPopup->GetValue(), 3);
}

TEST_F(UI_PopupTest, ChoosingWithTheKeysTellsTheValue) {
    ChooseFromList(4);
    EXPECT_EQ(mTold, Values{4});
    EXPECT_FALSE(IsOpen());
}

TEST_F(UI_PopupTest, EscapeInTheOpenListChoosesNothing) {
    Open();
    QTest::keyClick(GetCombo()->view(), Qt::Key_Down);
    QTest::keyClick(GetCombo()->view(), Qt::Key_Escape);
    EXPECT_TRUE(ProcessUntil([this] { return !IsOpen(); }));
    EXPECT_EQ(mPopup->GetValue(), 0);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_PopupTest, TheSameChoiceIsToldOnlyByThoseThatTellIt) {
    ChooseFromList(0);
    EXPECT_TRUE(mTold.empty());
    mStage.GetRoot()->ChildRemove(mPopup);
    AddPopup(true);
    mPopup->SetValueString(U("Bypass"), false);
    ChooseFromList(0);
    EXPECT_EQ(mTold, Values{0});
    EXPECT_EQ(mPopup->GetValueString(), U("(None)"));
}

TEST_F(UI_PopupTest, KeysAndTypingChooseInTheClosedPopup) {
    GiveFocus();
    QTest::keyClick(GetCombo(), Qt::Key_Down);
    QTest::keyClick(GetCombo(), Qt::Key_End);
    QTest::keyClick(GetCombo(), Qt::Key_End);
    EXPECT_EQ(mTold, (Values{1, 4}));
    QTest::keyClick(GetCombo(), Qt::Key_R);
    EXPECT_EQ(mTold, (Values{1, 4, 3}));
    EXPECT_EQ(GetCombo()->currentText(), "Right");
}

TEST_F(UI_PopupTest, ItsKeysAreNotTheHostsShortcuts) {
    const auto isOurs = [this](int key, const QString& text, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, text);
        event.ignore();
        QCoreApplication::sendEvent(GetCombo(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(isOurs(Qt::Key_Down, QString(), Qt::NoModifier));
    EXPECT_TRUE(isOurs(Qt::Key_Space, " ", Qt::NoModifier));
    EXPECT_TRUE(isOurs(Qt::Key_J, "j", Qt::NoModifier));
    EXPECT_FALSE(isOurs(Qt::Key_S, "s", Qt::ControlModifier));
    EXPECT_FALSE(isOurs(Qt::Key_Escape, "\x1b", Qt::NoModifier));
}

TEST_F(UI_PopupTest, TheWheelNeverChangesAClosedPopupFocusOrNot) {
    EventCounter scrolling(mStage.GetArea().viewport(), QEvent::Wheel);
    TurnWheel(GetCombo(), -120);
    GiveFocus();
    TurnWheel(GetCombo(), -120);
    EXPECT_EQ(scrolling.GetCount(), 2);
    EXPECT_EQ(mPopup->GetValue(), 0);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_PopupTest, ADisabledOneTakesNoInput) {
    mPopup->UI_SetDisabled(true);
    QTest::mouseClick(GetCombo(), Qt::LeftButton);
    QTest::keyClick(GetCombo(), Qt::Key_Down);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(mPopup->GetValue(), 0);
}

// An open list

TEST_F(UI_PopupTest, ChangingTheItemsClosesTheOpenList) {
    Open();
    mPopup->AddItem(U("New"));
    EXPECT_FALSE(IsOpen());
    Open();
    mPopup->RemoveAllItems();
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_PopupTest, TakingThePopupAwayClosesTheOpenList) {
    Open();
    const QPointer<QWidget> list = GetCombo()->view()->window();
    mStage.GetRoot()->ChildRemove(std::exchange(mPopup, nullptr));
    EXPECT_TRUE(WaitUntilGone(list));
}

TEST_F(UI_PopupTest, DisablingOrHidingThePopupClosesTheOpenList) {
    Open();
    mPopup->UI_SetDisabled(true);
    EXPECT_FALSE(IsOpen());
    mPopup->UI_SetDisabled(false);
    Open();
    mPopup->UI_Hide();
    EXPECT_FALSE(IsOpen());
}

// Sizes

TEST_F(UI_PopupTest, TheRecommendedSizeShowsTheWidestTextInFull) {
    const auto drawbot = zelui::drawbot::SupplierInterface::GetDefault()->NewDrawbot(1, 1, 1);
    const char kWidest[] = "Side Chain: Left Surround (Key)";
    mPopup->AddItem(U(kWidest));
    const zelcore::geom::PointF size = mPopup->UI_GetRecommendedSize(*drawbot);
    EXPECT_EQ(size.x, std::floor(size.x));
    mPopup->UI_SetLocalRectF({10, 10, size.x, 20});
    mPopup->SetValue(5);
    EXPECT_EQ(GetCombo()->toolTip(), "");
    mPopup->UI_SetLocalRectF({10, 10, size.x - 10, 20});
    EXPECT_TRUE(GetCombo()->toolTip().contains(kWidest));
}

TEST_F(UI_PopupTest, TheRecommendedSizeCountsAShownTextAndShrinksAgain) {
    const auto drawbot = zelui::drawbot::SupplierInterface::GetDefault()->NewDrawbot(1, 1, 1);
    const float before = mPopup->UI_GetRecommendedSize(*drawbot).x;
    mPopup->SetValueString(U("A text that is wider than all items"), false);
    EXPECT_GT(mPopup->UI_GetRecommendedSize(*drawbot).x, before);
    mPopup->SetValue(0);
    const int bypass = mPopup->AddItem(U("A text that is wider than all items"));
    EXPECT_GT(mPopup->UI_GetRecommendedSize(*drawbot).x, before);
    mPopup->RemoveItem(bypass);
    EXPECT_EQ(mPopup->UI_GetRecommendedSize(*drawbot).x, before);
}

TEST_F(UI_PopupTest, NothingOfTallLettersIsCutAtTwentyUnits) {
    mPopup->AddItem(zelcore::utility::UTF8to16("\xC3\x85gjpq"));
    mPopup->SetValue(5);
    const auto inkRows = [this](int height) {
        mPopup->UI_SetLocalRectF({10, 10, 120, static_cast<float>(height)});
        const QImage with = GetCombo()->grab().toImage();
        mPopup->SetValue(1);
        const QImage without = GetCombo()->grab().toImage();
        mPopup->SetValue(5);
        int rows = 0;
        for (int y = 0; y < height; ++y) rows += with.copy(0, y, 120, 1) != without.copy(0, y, 120, 1) ? 1 : 0;
        return rows;
    };
    EXPECT_EQ(inkRows(20), inkRows(40));
}

// Coming and going

TEST_F(UI_PopupTest, ComesBackTheSameAfterScrolling) {
    mPopup->SetValue(4);
    mPopup->SetValueString(U("Bypass"), false);
    const QImage image = GetCombo()->grab().toImage();
    mStage.ScrollAwayAndBack(*mPopup);
    EXPECT_EQ(GetCombo()->currentIndex(), 4);
    EXPECT_EQ(GetCombo()->currentText(), "Bypass");
    EXPECT_EQ(GetCombo()->itemText(2), "Left");
    EXPECT_EQ(GetCombo()->grab().toImage(), image);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_PopupTest, TheHandlerMayTakeAllAway) {
    const auto takeAway = [this](UI_ControlChangedMessage* message) {
        mTold.push_back(static_cast<UI_Popup&>(*message->GetControl()).GetValue());
        mStage.GetRoot()->ChildRemove(std::exchange(mPopup, nullptr));
    };
    mPopup->NotifyWhenChanged(Handler<UI_ControlView::ChangedFunction>(takeAway));
    Open();
    QAbstractItemView* const view = GetCombo()->view();
    QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Down);
    const QPointer<QComboBox> combo = GetCombo();
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(mTold, Values{2});
    EXPECT_TRUE(WaitUntilGone(combo.data()));
}

TEST_F(UI_PopupTest, TheHandlerMaySetAnotherValueAndItems) {
    mPopup->NotifyWhenChanged(Handler<UI_ControlView::ChangedFunction>([this](UI_ControlChangedMessage*) {
        mTold.push_back(mPopup->GetValue());
        mPopup->RemoveAllItems();
        mPopup->AddItem(U("Only"));
    }));
    ChooseFromList(3);
    EXPECT_EQ(mTold, Values{3});
    EXPECT_EQ(mPopup->GetValue(), 0);
    EXPECT_EQ(GetCombo()->currentText(), "Only");
}

TEST_F(UI_PopupTest, AnExceptionOfTheHandlerLeavesPopupAndWidgetTheSame) {
    mPopup->NotifyWhenChanged(Handler<UI_ControlView::ChangedFunction>(
        [](UI_ControlChangedMessage*) { throw std::runtime_error("from the product"); }));
    QTest::ignoreMessage(QtWarningMsg, "A popup's handler threw an exception: from the product");
    GiveFocus();
    QTest::keyClick(GetCombo(), Qt::Key_End);
    EXPECT_EQ(mPopup->GetValue(), 4);
    EXPECT_EQ(GetCombo()->currentIndex(), 4);
    EXPECT_THROW(mPopup->SetValueString(U("Bypass"), true), std::runtime_error) << "the program's own call";
}

}  // namespace zeltests
