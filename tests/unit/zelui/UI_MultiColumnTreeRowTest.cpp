#include <stdexcept>
#include <zelui/UI_NodeManager.h>

#include "TreeStage.h"

namespace zeltests {
namespace {

class UI_MultiColumnTreeRowTest : public TreeStage {
protected:
    UI_MultiColumnTreeRowTest() { MakeHeader(); }

    std::size_t CountBoxes() const { return static_cast<std::size_t>(GetTable()->findChildren<QCheckBox*>().size()); }
    void ScrollTo(int y) {
        GetTable()->verticalScrollBar()->setValue(y);
        Sync();
    }
    int CountVisible() const {
        int visible = 0;
        for (std::size_t i = 0; i < mTree->GetRowCount(); ++i) visible += mTree->IsRowVisible(Row(i)) ? 1 : 0;
        return visible;
    }
};

}  // namespace

// Coming into view

TEST_F(UI_MultiColumnTreeRowTest, OnlyRowsInViewAreToldVisible) {
    Fill(10000);
    EXPECT_EQ(mVisibilityTold, 0);
    Show();
    EXPECT_EQ(mVisibilityTold, 10);
    EXPECT_TRUE(mTree->IsRowVisible(Row(0)));
    EXPECT_TRUE(mTree->IsRowVisible(Row(9)));
    EXPECT_FALSE(mTree->IsRowVisible(Row(10)));
}

TEST_F(UI_MultiColumnTreeRowTest, ARowOfWhichAPixelCanBeSeenIsVisible) {
    Fill(100);
    Show();
    ScrollTo(GetRowHeight() * 20 + 1);
    EXPECT_EQ(CountVisible(), 11);
    EXPECT_TRUE(mTree->IsRowVisible(Row(20)));
    EXPECT_TRUE(mTree->IsRowVisible(Row(30)));
    ScrollTo(GetRowHeight() * 20);
    EXPECT_EQ(CountVisible(), 10);
    EXPECT_EQ(mVisibilityTold, 10 + 10 + 11 + 1);
}

TEST_F(UI_MultiColumnTreeRowTest, RowsSkippedByScrollingAreNeverTold) {
    Fill(10000);
    Show();
    GetTable()->verticalScrollBar()->setValue(100000);
    GetTable()->verticalScrollBar()->setValue(50000);
    GetTable()->verticalScrollBar()->setValue(0);
    Sync();
    EXPECT_EQ(mVisibilityTold, 10);
}

TEST_F(UI_MultiColumnTreeRowTest, HidingTheListOrWhatIsRoundItHidesItsRows) {
    Fill(20);
    Show();
    mTree->UI_Hide();
    Sync();
    EXPECT_EQ(CountVisible(), 0);
    mTree->UI_Show(true);
    Sync();
    EXPECT_EQ(CountVisible(), 10);
    mStage.GetArea().hide();
    Sync();
    EXPECT_EQ(CountVisible(), 0);
    mStage.GetArea().show();
    EXPECT_TRUE(ProcessUntil([this] { return CountVisible() == 10; }));
    mStage.GetRoot()->ChildRemove(mTree);
    Sync();
    EXPECT_EQ(CountVisible(), 0);
}

TEST_F(UI_MultiColumnTreeRowTest, ATallerListShowsMoreRows) {
    Fill(20);
    Show();
    zelcore::geom::RectF frame = kTreeFrame;
    frame.height -= 60;
    mTree->UI_SetLocalRectF(frame);
    Sync();
    EXPECT_EQ(CountVisible(), 7);
}

TEST_F(UI_MultiColumnTreeRowTest, SyncVisibilityTellsAtOnce) {
    Fill(3);
    Show();
    mTree->RemoveAllRows();
    EXPECT_EQ(mVisibilityTold, 6);
    Fill(4);
    EXPECT_EQ(mVisibilityTold, 6);
    mTree->SyncVisibility();
    EXPECT_EQ(mVisibilityTold, 10);
    EXPECT_TRUE(mTree->IsRowVisible(Row(3)));
}

TEST_F(UI_MultiColumnTreeRowTest, RemovedRowsLeaveTheViewBeforeTheyGo) {
    Fill(30);
    Show();
    int left = 0;
    onVisibility = [&](const RowPtr& row) {
        ++left;
        EXPECT_FALSE(mTree->IsRowVisible(row));
        EXPECT_EQ(row->GetTree(), mTree.get());
        EXPECT_EQ(mTree->GetRowCount(), 30u);
    };
    const RowPtr row = Row(0);
    mTree->RemoveAllRows();
    EXPECT_EQ(left, 10);
    EXPECT_EQ(row->GetTree(), nullptr);
    EXPECT_EQ(row->GetCellView(0), nullptr);
    Sync();
    EXPECT_EQ(left, 10);
}

TEST_F(UI_MultiColumnTreeRowTest, SortingTellsOfTheRowsThatComeAndGo) {
    for (int i = 0; i < 40; ++i) Fill({"Row " + std::to_string(i)});
    Show();
    mHeader->SetSortColumn(12);
    mHeader->SetSortDirection(false);
    mTree->SortTree();
    Sync();
    EXPECT_EQ(NameAt(0), "Row 39");
    EXPECT_EQ(mVisibilityTold, 30);
    EXPECT_TRUE(mTree->IsRowVisible(Row(0)));
    EXPECT_FALSE(mTree->IsRowVisible(Row(39)));
}

// Cells

TEST_F(UI_MultiColumnTreeRowTest, ACellViewHasTheFrameOfItsCellInTheContentView) {
    Fill(20);
    Show();
    const auto cell = Row(2)->GetCellView(1);
    const float height = mTree->GetRowHeight();
    EXPECT_EQ(cell->UI_GetParentNode(), mTree->GetContentView().get());
    EXPECT_EQ(mTree->GetContentView()->UI_GetParentNode(), mTree.get());
    EXPECT_EQ(cell->UI_GetLocalRectF(), (zelcore::geom::RectF{70, 2 * height, 140, height}));
    EXPECT_EQ(Row(2)->GetCellView(1), cell);
    EXPECT_EQ(Row(2)->GetCellView(3), nullptr);
    EXPECT_EQ(Row(2)->GetCellView(-1), nullptr);
    mHeader->SetColumnWidth(11, 100);
    ScrollTo(5);
    EXPECT_EQ(cell->UI_GetLocalRectF(), (zelcore::geom::RectF{100, 2 * height - 5, 140, height}));
    QWidget* const widget = zelui::qt::GetWidget(*cell);
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(widget->parentWidget(), GetViewport());
    EXPECT_EQ(widget->geometry(), QRect(100, 2 * GetRowHeight() - 5, 140, GetRowHeight()));
}

TEST_F(UI_MultiColumnTreeRowTest, TenThousandRowsHaveControlsOnlyWhereTheyAreSeen) {
    mWantsControls = true;
    Fill(10000);
    Show();
    EXPECT_EQ(CountBoxes(), 10u);
    EXPECT_TRUE(BoxWidgetAt(0)->isVisible());
    for (int y = 0; y < 100000; y += 7777) ScrollTo(y);
    ScrollTo(100000);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(mCheckboxes.size(), 10u);
    EXPECT_EQ(CountBoxes(), 10u);
    EXPECT_EQ(mTree->GetContentView()->ChildCount(), 20u);
}

TEST_F(UI_MultiColumnTreeRowTest, ControlsAreThereBeforeTheirRowIsPainted) {
    mWantsControls = true;
    Fill(1000);
    Show();
    bool wasAnyBare = false;
    mTree->SetDrawCellOfRowCallback(
        [&](zelui::drawbot::Drawbot&, const RowPtr& row, int, const zelcore::geom::RectF&, bool) {
            const auto found = mCheckboxes.find(row.get());
            const float top = row->GetCellView(0)->UI_GetLocalRectF().top + 3;
            const bool isInView = top > -14 && top < mTree->GetContentView()->UI_GetLocalRectF().height;
            wasAnyBare = wasAnyBare || found == mCheckboxes.end() ||
                         (isInView && zelui::qt::GetWidget(*found->second) == nullptr);
        });
    Sync();
    for (int y = 50; y < 5000; y += 333) ScrollTo(y);
    EXPECT_FALSE(wasAnyBare);
}

TEST_F(UI_MultiColumnTreeRowTest, ARowThatIsOutOfViewLetsGoOfItsCells) {
    Fill(100);
    Show();
    auto cell = Row(0)->GetCellView(0);
    ScrollTo(1000);
    EXPECT_EQ(cell->UI_GetParentNode(), nullptr);
    EXPECT_EQ(cell->GetRefCount(), 1);
    ScrollTo(0);
    EXPECT_NE(Row(0)->GetCellView(0), cell);
}

TEST_F(UI_MultiColumnTreeRowTest, DisablingTheListDisablesTheControlsInIt) {
    mWantsControls = true;
    Fill(3);
    Show();
    mTree->UI_SetDisabled(true);
    EXPECT_TRUE(CheckboxAt(0)->UI_IsDisabled());
    EXPECT_FALSE(BoxWidgetAt(0)->isEnabled());
    mTree->UI_SetDisabled(false);
    EXPECT_TRUE(BoxWidgetAt(0)->isEnabled());
}

TEST_F(UI_MultiColumnTreeRowTest, AControlWithoutATextIsNamedByColumnAndRow) {
    mWantsControls = true;
    Fill({"Zam Gate"});
    Show();
    EXPECT_EQ(GetAccessibleName(*CheckboxAt(0)), "Enabled Zam Gate");
    EXPECT_EQ(GetAccessibleName(*ButtonAt(0)), "Reload");
}

// Controls and the mouse

TEST_F(UI_MultiColumnTreeRowTest, AClickOnAControlUsesItAndSelectsItsRow) {
    mWantsControls = true;
    mTree->SetSupportUserSelectableCells(true);
    Fill(5);
    Show();
    QTest::mouseClick(BoxWidgetAt(2), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(mUsed, Names{"Row 2"});
    EXPECT_TRUE(CheckboxAt(2)->IsChecked());
    EXPECT_EQ(GetSelectedNames(), Names{"Row 2"});
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 0);
    EXPECT_TRUE(CheckboxAt(2)->UI_HasKeyboardFocus(false));
    EXPECT_TRUE(mTree->UI_HasKeyboardFocus(true));
}

TEST_F(UI_MultiColumnTreeRowTest, AControlThatTakesNoFocusSelectsItsRowAsWell) {
    mWantsControls = true;
    Fill(5);
    Show();
    CheckboxAt(3)->SetWantsKeyboardFocus(false);
    QTest::mouseClick(BoxWidgetAt(3), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(mUsed, Names{"Row 3"});
    EXPECT_EQ(GetSelectedNames(), Names{"Row 3"});
}

TEST_F(UI_MultiColumnTreeRowTest, AClickOnADisabledControlSelectsItsRow) {
    mWantsControls = true;
    Fill(5);
    Show();
    CheckboxAt(2)->UI_SetDisabled(true);
    QTest::mouseClick(BoxWidgetAt(2)->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      BoxWidgetAt(2)->mapTo(BoxWidgetAt(2)->window(), QPoint(7, 7)));
    EXPECT_TRUE(mUsed.empty());
    EXPECT_EQ(GetSelectedNames(), Names{"Row 2"});
}

TEST_F(UI_MultiColumnTreeRowTest, UsingAControlOfASelectedRowKeepsTheOthersSelected) {
    mWantsControls = true;
    mTree->SetSupportMultipleSelections(true);
    Fill(5);
    Show();
    Click(1, 1);
    Click(3, 1, Qt::ShiftModifier);
    QTest::mouseClick(BoxWidgetAt(2), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(GetSelectedNames(), (Names{"Row 1", "Row 2", "Row 3"}));
    QTest::mouseClick(BoxWidgetAt(4), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(GetSelectedNames(), Names{"Row 4"});
}

TEST_F(UI_MultiColumnTreeRowTest, AHandlerMayRefillTheList) {
    mWantsControls = true;
    Fill(200);
    Show();
    ScrollTo(300);
    onUsed = [this] {
        mTree->RemoveAllRows();
        Fill(200);
        mTree->SortTree();
    };
    const QPointer<QWidget> box = BoxWidgetAt(17);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(mUsed, Names{"Row 17"});
    EXPECT_TRUE(mTree->UI_HasKeyboardFocus(false)) << "the focus stays in the list";
    EXPECT_TRUE(WaitUntilGone(box));
    Sync();
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 300) << "nobody asked to scroll";
    EXPECT_EQ(CountBoxes(), 10u);
    EXPECT_FALSE(mTree->IsAnyRowSelected());
    QTest::mouseClick(BoxWidgetAt(16), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(mUsed.back(), "Row 16");
}

TEST_F(UI_MultiColumnTreeRowTest, AHandlerMayTakeTheListAway) {
    mWantsControls = true;
    Fill(20);
    Show();
    onUsed = [this] { mStage.GetRoot()->ChildRemove(std::exchange(mTree, nullptr)); };
    const QPointer<QWidget> table = GetTable();
    const CheckboxPtr box = CheckboxAt(1);
    QTest::mouseClick(BoxWidgetAt(1), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_EQ(mUsed, Names{"Row 1"});
    EXPECT_TRUE(WaitUntilGone(table));
}

TEST_F(UI_MultiColumnTreeRowTest, APressThatTakesItsRowAwayUsesNothing) {
    mWantsControls = true;
    Fill(20);
    Show();
    mTree->SetRowsSelectionChangedCallback([this] {
        mTree->SetRowsSelectionChangedCallback({});
        mTree->RemoveAllRows();
    });
    QTest::mouseClick(BoxWidgetAt(1), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    EXPECT_TRUE(mUsed.empty());
    EXPECT_EQ(mTree->GetRowCount(), 0u);
}

TEST_F(UI_MultiColumnTreeRowTest, TheFocusOfAControlThatScrollsAwayIsTheLists) {
    mWantsControls = true;
    Fill(100);
    Show();
    QTest::mouseClick(BoxWidgetAt(1), Qt::LeftButton, Qt::NoModifier, QPoint(7, 7));
    ScrollTo(1000);
    EXPECT_TRUE(mTree->UI_HasKeyboardFocus(false));
    EXPECT_EQ(GetSelectedNames(), Names{"Row 1"});
}

TEST_F(UI_MultiColumnTreeRowTest, TheWheelOverAControlScrollsTheList) {
    mWantsControls = true;
    Fill(100);
    Show();
    TurnWheel(BoxWidgetAt(2), -120);
    const int once = GetTable()->verticalScrollBar()->value();
    EXPECT_GT(once, 0);
    CheckboxAt(5)->UI_SetDisabled(true);
    TurnWheel(BoxWidgetAt(5), -120);
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 2 * once) << "disabled buttons would keep it";
}

// Callbacks

TEST_F(UI_MultiColumnTreeRowTest, TheVisibilityCallbackMayChangeTheRows) {
    Fill(20);
    bool refilled = false;
    onVisibility = [&](const RowPtr& row) {
        if (refilled || !mTree->IsRowVisible(row) || mNames[row.get()] != "Row 4") return;
        refilled = true;
        mTree->RemoveAllRows();
        Fill({"only"});
    };
    Show();
    EXPECT_EQ(GetNames(), Names{"only"});
    EXPECT_TRUE(mTree->IsRowVisible(Row(0)));
    EXPECT_EQ(mVisibilityTold, 11);
}

TEST_F(UI_MultiColumnTreeRowTest, AVisibilityCallbackThatAlwaysChangesTheRowsBlocksNothing) {
    Fill(5);
    onVisibility = [&](const RowPtr& row) {
        if (!mTree->IsRowVisible(row)) return;
        mTree->RemoveAllRows();
        Fill(5);
    };
    mStage.Add(mTree.get(), kTreeFrame);
    onVisibility = {};
    Sync();
    EXPECT_EQ(CountVisible(), 5);
}

TEST_F(UI_MultiColumnTreeRowTest, TheVisibilityCallbackMayLetGoOfTheTree) {
    Fill(20);
    const std::size_t before = zelui::ui::UI_NodeManager::Get(true).GetNodeCount();
    onVisibility = [&](const RowPtr&) { mStage.GetRoot()->ChildRemove(std::exchange(mTree, nullptr)); };
    mTree->UI_SetLocalRectF(kTreeFrame);
    mTree->UI_Show(true);
    mStage.GetRoot()->ChildPushBack(mTree);
    EXPECT_TRUE(ProcessUntil([this] { return mTree == nullptr; }));
    EXPECT_LT(zelui::ui::UI_NodeManager::Get(true).GetNodeCount(), before);
}

TEST_F(UI_MultiColumnTreeRowTest, AnExceptionOfTheVisibilityCallbackEndsThere) {
    Fill(1);
    onVisibility = [](const RowPtr&) { throw std::runtime_error("no controls"); };
    QTest::ignoreMessage(QtWarningMsg, "A list's visibility handler threw an exception: no controls");
    Show();
    EXPECT_TRUE(mTree->IsRowVisible(Row(0)));
    QTest::ignoreMessage(QtWarningMsg, "A list's visibility handler threw an exception: no controls");
    mTree->RemoveAllRows();
    EXPECT_EQ(mTree->GetRowCount(), 0u);
}

TEST_F(UI_MultiColumnTreeRowTest, ATreeThatGoesTellsNobodyAndLeavesItsRows) {
    Fill(20);
    Show();
    const RowPtr row = Row(0);
    const auto cell = row->GetCellView(0);
    mVisibilityTold = 0;
    mStage.GetRoot()->ChildRemove(std::exchange(mTree, nullptr));
    Sync();
    EXPECT_EQ(mVisibilityTold, 0);
    EXPECT_EQ(row->GetTree(), nullptr);
    EXPECT_EQ(row->GetCellView(0), nullptr);
    EXPECT_EQ(cell->UI_GetParentNode(), nullptr);
}

}  // namespace zeltests
