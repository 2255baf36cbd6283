#include "TreeStage.h"

namespace zeltests {
namespace {

class UI_MultiColumnTreeKeyboardTest : public TreeStage {
protected:
    UI_MultiColumnTreeKeyboardTest() { MakeHeader(); }

    void ShowFocused(int rows) {
        Fill(rows);
        Show();
        GiveFocus();
    }
    bool Hand(int osCode, int modifiers = 0) {
        return mTree->UI_DoKeyboardEvent({zelui::ui::KeyboardEvent::kKeyDown, osCode, modifiers, {}, false});
    }
    const void* GetFocus() const { return mTree->UI_GetKeyboardFocusLeafNode(); }
};

const int kTabCode = 9;

}  // namespace

// Rows

TEST_F(UI_MultiColumnTreeKeyboardTest, ArrowsPagesHomeAndEndMoveTheRow) {
    ShowFocused(50);
    Press(Qt::Key_Down);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 0"});
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    Press(Qt::Key_Up);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 1"});
    Press(Qt::Key_PageDown);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 10"});
    Press(Qt::Key_End);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 49"});
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), GetTable()->verticalScrollBar()->maximum());
    Press(Qt::Key_Down);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 40"});
    Press(Qt::Key_Home);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 0"});
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
    Press(Qt::Key_Up);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 0"});
}

TEST_F(UI_MultiColumnTreeKeyboardTest, WithoutRowsTheKeysAreNotUsed) {
    ShowFocused(0);
    EXPECT_FALSE(Hand(40));
    EXPECT_FALSE(Hand(32));
    EXPECT_FALSE(Hand(13));
    EXPECT_FALSE(Hand(kTabCode));
}

TEST_F(UI_MultiColumnTreeKeyboardTest, WhereRowsCannotBeSelectedTheKeysScroll) {
    mTree->SetSupportUserSelectableRows(false);
    ShowFocused(50);
    Press(Qt::Key_Down);
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), GetRowHeight());
    Press(Qt::Key_End);
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), GetTable()->verticalScrollBar()->maximum());
    Press(Qt::Key_Home);
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
    EXPECT_FALSE(mTree->IsAnyRowSelected());
}

TEST_F(UI_MultiColumnTreeKeyboardTest, ShiftAndControlSelectSeveralWhereThatIsSupported) {
    mTree->SetSupportMultipleSelections(true);
    ShowFocused(20);
    Press(Qt::Key_Down);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(GetSelectedNames(), (Names{"Row 0", "Row 1", "Row 2"}));
    Press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(GetSelectedNames(), (Names{"Row 0", "Row 1"}));
    Press(Qt::Key_Down, Qt::ControlModifier);
    Press(Qt::Key_Down, Qt::ControlModifier);
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(GetSelectedNames(), (Names{"Row 0", "Row 1", "Row 3"}));
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(GetSelectedNames().size(), 20u);
}

TEST_F(UI_MultiColumnTreeKeyboardTest, SortingMovesOnFromTheSameRow) {
    Fill({"c", "b", "a", "d"});
    Show();
    GiveFocus();
    mTree->SelectRow(Row(0));
    mHeader->SetSortColumn(12);
    mTree->SortTree();
    Press(Qt::Key_Down);
    EXPECT_EQ(GetSelectedNames(), Names{"d"});
}

TEST_F(UI_MultiColumnTreeKeyboardTest, TypingSelectsTheNextRowThatBeginsSoWhereThatIsSupported) {
    Fill({"alpha", "beta", "Gate", "beta two", "gamma"});
    Show();
    GiveFocus();
    QTest::keyClicks(GetTable(), "g");
    EXPECT_FALSE(mTree->IsAnyRowSelected());
    mTree->SetSupportNonArrowKeysToSelectRow(true);
    QTest::keyClicks(GetTable(), "ga");
    EXPECT_EQ(GetSelectedNames(), Names{"Gate"});
    QTest::keyClicks(GetTable(), "m");
    EXPECT_EQ(GetSelectedNames(), Names{"gamma"});
}

TEST_F(UI_MultiColumnTreeKeyboardTest, ABlankIsPartOfWhatIsTyped) {
    mTree->SetSupportNonArrowKeysToSelectRow(true);
    mWantsControls = true;
    Fill({"beta", "beta two"});
    Show();
    GiveFocus();
    QTest::keyClicks(GetTable(), "beta t");
    EXPECT_EQ(GetSelectedNames(), Names{"beta two"});
    EXPECT_TRUE(mUsed.empty());
}

// Cells

TEST_F(UI_MultiColumnTreeKeyboardTest, LeftAndRightMoveTheCellWhereCellsCanBeSelected) {
    mTree->SetSupportUserSelectableCells(true);
    ShowFocused(5);
    Press(Qt::Key_Down);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), -1);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 1);
    EXPECT_EQ(mCellsTold, 2);
    Press(Qt::Key_Down);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 1);
    EXPECT_EQ(mCellsTold, 3);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 2);
    Press(Qt::Key_Left);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 1);
}

TEST_F(UI_MultiColumnTreeKeyboardTest, TheSelectedCellIsScrolledIntoView) {
    mTree->SetSupportUserSelectableCells(true);
    mHeader->SetColumnWidth(12, 400);
    ShowFocused(5);
    Press(Qt::Key_Down);
    for (int i = 0; i < 3; ++i) Press(Qt::Key_Right);
    EXPECT_EQ(GetTable()->horizontalScrollBar()->value(), 570 - GetViewport()->width());
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    EXPECT_EQ(GetTable()->horizontalScrollBar()->value(), 0);
}

TEST_F(UI_MultiColumnTreeKeyboardTest, LeftAndRightScrollWhereCellsCannotBeSelected) {
    mHeader->SetColumnWidth(12, 400);
    ShowFocused(5);
    Press(Qt::Key_Right);
    EXPECT_GT(GetTable()->horizontalScrollBar()->value(), 0);
    Press(Qt::Key_Left);
    EXPECT_EQ(GetTable()->horizontalScrollBar()->value(), 0);
}

// Controls

TEST_F(UI_MultiColumnTreeKeyboardTest, SpaceUsesTheControlOfTheCellOrOfTheRow) {
    mTree->SetSupportUserSelectableCells(true);
    mWantsControls = true;
    ShowFocused(5);
    Press(Qt::Key_Down);
    Press(Qt::Key_Space);
    EXPECT_EQ(mUsed, Names{"Row 0"});
    for (int i = 0; i < 3; ++i) Press(Qt::Key_Right);
    Press(Qt::Key_Space);
    EXPECT_EQ(mUsed.back(), "reload Row 0");
    Press(Qt::Key_Left);
    Press(Qt::Key_Space);
    EXPECT_EQ(mUsed, (Names{"Row 0", "reload Row 0", "Row 0"})) << "the cell in the middle has none";
    EXPECT_TRUE(mTree->UI_HasKeyboardFocus(false));
}

TEST_F(UI_MultiColumnTreeKeyboardTest, ReturnUsesTheControlOfTheSelectedCellAlone) {
    mTree->SetSupportUserSelectableCells(true);
    mWantsControls = true;
    ShowFocused(5);
    Press(Qt::Key_Down);
    EXPECT_FALSE(Hand(13));
    Press(Qt::Key_Right);
    EXPECT_FALSE(Hand(13)) << "a check box is for Space";
    Press(Qt::Key_Right);
    EXPECT_FALSE(Hand(13)) << "left to the dialog";
    EXPECT_TRUE(mUsed.empty());
    Press(Qt::Key_Right);
    Press(Qt::Key_Return);
    EXPECT_EQ(mUsed, Names{"reload Row 0"});
}

TEST_F(UI_MultiColumnTreeKeyboardTest, ADisabledControlOfTheSelectedCellIsNotUsedNorAnotherInItsPlace) {
    mTree->SetSupportUserSelectableCells(true);
    mWantsControls = true;
    ShowFocused(3);
    CheckboxAt(0)->UI_SetDisabled(true);
    Press(Qt::Key_Down);
    Press(Qt::Key_Right);
    Press(Qt::Key_Space);
    EXPECT_TRUE(mUsed.empty());
}

TEST_F(UI_MultiColumnTreeKeyboardTest, OfARowSpaceUsesTheFirstControlThatIsNotDisabled) {
    mWantsControls = true;
    ShowFocused(3);
    CheckboxAt(0)->UI_SetDisabled(true);
    Press(Qt::Key_Down);
    Press(Qt::Key_Space);
    EXPECT_EQ(mUsed, Names{"reload Row 0"});
}

TEST_F(UI_MultiColumnTreeKeyboardTest, SpaceComesToTheControlOfASelectedRowThatIsOutOfView) {
    mWantsControls = true;
    ShowFocused(100);
    Press(Qt::Key_Down);
    GetTable()->verticalScrollBar()->setValue(1000);
    Sync();
    Press(Qt::Key_Space);
    EXPECT_EQ(mUsed, Names{"Row 0"});
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
}

TEST_F(UI_MultiColumnTreeKeyboardTest, SpaceInAHandlerThatRefillsIsHarmless) {
    mWantsControls = true;
    ShowFocused(50);
    onUsed = [this] {
        mTree->RemoveAllRows();
        Fill(50);
    };
    Press(Qt::Key_End);
    Press(Qt::Key_Space);
    EXPECT_EQ(mUsed, Names{"Row 49"});
    EXPECT_TRUE(mTree->UI_HasKeyboardFocus(false));
    Press(Qt::Key_Down);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 0"});
}

// Tab

TEST_F(UI_MultiColumnTreeKeyboardTest, TabGoesThroughTheControlsOfTheSelectedRowAndOn) {
    mTree->SetSupportUserSelectableCells(true);
    mWantsControls = true;
    Fill(5);
    Show();
    mTree->SelectRow(Row(2));
    mBefore->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetFocus(), mTree.get());
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetFocus(), CheckboxAt(2).get());
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 0);
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetFocus(), ButtonAt(2).get());
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 2);
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetFocus(), mAfter.get());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(GetFocus(), ButtonAt(2).get());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(GetFocus(), CheckboxAt(2).get());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(GetFocus(), mTree.get());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(GetFocus(), mBefore.get());
    EXPECT_EQ(GetSelectedNames(), Names{"Row 2"});
}

TEST_F(UI_MultiColumnTreeKeyboardTest, TabGoesOnFromTheSelectedCell) {
    mTree->SetSupportUserSelectableCells(true);
    mWantsControls = true;
    Fill(5);
    Show();
    Click(2, 1);
    EXPECT_TRUE(Hand(kTabCode));
    EXPECT_EQ(GetFocus(), ButtonAt(2).get());
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 2);
    EXPECT_FALSE(Hand(kTabCode));
    EXPECT_EQ(GetFocus(), ButtonAt(2).get());
    EXPECT_TRUE(Hand(kTabCode, zelui::ui::KeyboardEvent::kShift));
    EXPECT_TRUE(Hand(kTabCode, zelui::ui::KeyboardEvent::kShift));
    EXPECT_EQ(GetFocus(), mTree.get());
    EXPECT_FALSE(Hand(kTabCode, zelui::ui::KeyboardEvent::kShift));
}

TEST_F(UI_MultiColumnTreeKeyboardTest, TabPassesARowWithoutControlsAndAListWithoutASelectedRow) {
    mWantsControls = true;
    ShowFocused(5);
    EXPECT_FALSE(Hand(kTabCode));
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetFocus(), mAfter.get());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(GetFocus(), mTree.get());
    mTree->SelectRow(Row(0));
    CheckboxAt(0)->UI_SetDisabled(true);
    ButtonAt(0)->UI_Hide();
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetFocus(), mAfter.get());
}

TEST_F(UI_MultiColumnTreeKeyboardTest, TabBringsTheSelectedRowIntoView) {
    mWantsControls = true;
    ShowFocused(100);
    Press(Qt::Key_Down);
    GetTable()->verticalScrollBar()->setValue(1000);
    Sync();
    Press(Qt::Key_Tab);
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
    EXPECT_EQ(GetFocus(), CheckboxAt(0).get());
}

TEST_F(UI_MultiColumnTreeKeyboardTest, ArrowsInACheckBoxMoveTheRow) {
    mWantsControls = true;
    Fill(5);
    Show();
    QTest::mouseClick(BoxWidgetAt(1), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(GetFocus(), CheckboxAt(1).get());
    Press(Qt::Key_Down);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 2"});
    EXPECT_EQ(GetFocus(), mTree.get());
}

TEST_F(UI_MultiColumnTreeKeyboardTest, AControlThatIsDisabledLeavesTheFocusToTheList) {
    mWantsControls = true;
    Fill(5);
    Show();
    onUsed = [this] { CheckboxAt(1)->UI_SetDisabled(true); };
    QTest::mouseClick(BoxWidgetAt(1), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(GetFocus(), mTree.get());
}

TEST_F(UI_MultiColumnTreeKeyboardTest, ItsKeysAreNotTheHostsShortcuts) {
    ShowFocused(2);
    const auto isOurs = [this](int key, const QString& text, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, text);
        event.ignore();
        QCoreApplication::sendEvent(GetTable(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(isOurs(Qt::Key_Down, QString(), Qt::NoModifier));
    EXPECT_TRUE(isOurs(Qt::Key_Space, " ", Qt::NoModifier));
    EXPECT_FALSE(isOurs(Qt::Key_J, "j", Qt::NoModifier));
    EXPECT_FALSE(isOurs(Qt::Key_S, "s", Qt::ControlModifier));
    EXPECT_FALSE(isOurs(Qt::Key_Escape, "\x1b", Qt::NoModifier));
    EXPECT_FALSE(isOurs(Qt::Key_Return, "\r", Qt::NoModifier));
    mTree->SetSupportNonArrowKeysToSelectRow(true);
    EXPECT_TRUE(isOurs(Qt::Key_J, "j", Qt::NoModifier));
}

}  // namespace zeltests
