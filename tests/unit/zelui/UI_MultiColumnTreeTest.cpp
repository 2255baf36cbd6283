#include <limits>
#include <QHelpEvent>
#include <QToolTip>
#include <set>
#include <stdexcept>
#include <zelui/SupplierInterface.h>
#include <zelui/Theme.h>

#include "TreeStage.h"

namespace zeltests {
namespace {

class UI_MultiColumnTreeTest : public TreeStage {
protected:
    UI_MultiColumnTreeTest() {
        MakeHeader();
        mTree->SetDrawCellOfRowCallback([this](zelui::drawbot::Drawbot& drawbot, const RowPtr& row, int column,
                                               const zelcore::geom::RectF& cell, bool isHighlighted) {
            mDrawn.insert(mNames[row.get()] + "/" + std::to_string(column) + (isHighlighted ? "*" : ""));
            if (onDraw) onDraw(drawbot, row, column, cell);
        });
    }
    ~UI_MultiColumnTreeTest() override { zelui::ui::Theme::Get().Choose(zelui::ui::Theme::kSystem); }

    QImage Grab() {
        mDrawn.clear();
        Sync();
        return GetTable()->grab().toImage();
    }
    QColor ColorAt(std::size_t place, int column) {
        const QPoint point = GetViewport()->mapTo(GetTable(), PointIn(place, column));
        return Grab().pixelColor(point);
    }
    QColor GetRole(QPalette::ColorRole role) const { return QApplication::palette().color(QPalette::Active, role); }
    void Drag(std::size_t from, const QPoint& to) {
        QTest::mousePress(GetViewport(), Qt::LeftButton, Qt::NoModifier, PointIn(from, 1));
        QMouseEvent move(QEvent::MouseMove, to, GetViewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(GetViewport(), &move);
    }
    void Release() { QTest::mouseRelease(GetViewport(), Qt::LeftButton, Qt::NoModifier, PointIn(0, 1)); }
    bool ShowsToolTip(std::size_t place, int column) {
        QToolTip::hideText();
        EXPECT_TRUE(ProcessUntil([] { return !QToolTip::isVisible(); }));
        const QPoint point = PointIn(place, column);
        QHelpEvent help(QEvent::ToolTip, point, GetViewport()->mapToGlobal(point));
        QCoreApplication::sendEvent(GetViewport(), &help);
        return QToolTip::isVisible() && !QToolTip::text().isEmpty();
    }

    std::set<std::string> mDrawn;
    std::function<void(zelui::drawbot::Drawbot&, const RowPtr&, int, const zelcore::geom::RectF&)> onDraw;
};

}  // namespace

// Rows and columns

TEST_F(UI_MultiColumnTreeTest, RowsStandInTheOrderInWhichTheyWereAppended) {
    const RowPtr own(new zelui::controls::UI_MultiColumnTreeRow);
    mTree->AppendRow(own);
    const RowPtr second = mTree->CreateAndAppendRow();
    EXPECT_EQ(mTree->GetRowCount(), 2u);
    EXPECT_EQ(Row(0), own);
    EXPECT_EQ(Row(1), second);
    EXPECT_EQ(Row(2), nullptr);
    EXPECT_EQ(own->GetTree(), mTree.get());
    mTree->RemoveAllRows();
    EXPECT_EQ(mTree->GetRowCount(), 0u);
    EXPECT_EQ(own->GetTree(), nullptr);
    EXPECT_EQ(own->GetRefCount(), 1);
}

TEST_F(UI_MultiColumnTreeTest, ARowIsInOneTreeAtATime) {
    const RowPtr row = mTree->CreateAndAppendRow();
    const boost::intrusive_ptr<Tree> other(new Tree);
    EXPECT_THROW(other->AppendRow(row), std::invalid_argument);
    EXPECT_THROW(mTree->AppendRow(row), std::invalid_argument);
    EXPECT_THROW(mTree->AppendRow(nullptr), std::invalid_argument);
    mTree->RemoveAllRows();
    other->AppendRow(row);
    EXPECT_EQ(row->GetTree(), other.get());
}

TEST_F(UI_MultiColumnTreeTest, WithoutAHeaderThereAreAsManyColumnsAsWereSet) {
    const boost::intrusive_ptr<Tree> plain(new Tree);
    EXPECT_EQ(plain->GetColumnCount(), 1);
    EXPECT_EQ(plain->GetHeaderRow(), nullptr);
    plain->SetNumberOfColumns(3);
    plain->SetColumnWidth(2, 55.4f);
    EXPECT_EQ(plain->GetColumnCount(), 3);
    EXPECT_EQ(plain->GetColumnWidth(2), 55.0f);
    plain->SetColumnWidth(3, 55);
    plain->SetColumnWidth(-1, 55);
    plain->SetColumnWidth(1, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(plain->GetColumnWidth(3), 0.0f);
    plain->SetNumberOfColumns(1000000);
    EXPECT_EQ(plain->GetColumnCount(), 64);
    plain->SetNumberOfColumns(0);
    EXPECT_EQ(plain->GetColumnCount(), 1);
    mStage.Add(plain.get(), kTreeFrame);
    EXPECT_FALSE(ControlStage::GetWidget<QTableView>(*plain)->horizontalHeader()->isVisible());
}

TEST_F(UI_MultiColumnTreeTest, TheContentViewLiesInsideTheFrameBelowTheHeader) {
    mTree->UI_SetLocalRectF(kTreeFrame);
    const zelcore::geom::RectF before = mTree->GetContentView()->UI_GetLocalRectF();
    EXPECT_GT(before.top, 15.0f);
    EXPECT_GT(before.left, 0.0f);
    EXPECT_LT(before.width, kTreeFrame.width);
    EXPECT_GT(before.width, kTreeFrame.width - 10);
    Fill(3);
    Show();
    EXPECT_EQ(mTree->GetContentView()->UI_GetLocalRectF(), before) << "without scroll bars, seen or not";
    Fill(100);
    Sync();
    EXPECT_LT(mTree->GetContentView()->UI_GetLocalRectF().width, before.width) << "beside the scroll bar";
    EXPECT_EQ(mTree->GetContentView()->UI_GetLocalRect().width, GetViewport()->width());
    EXPECT_EQ(zelui::qt::GetWidget(*mTree->GetContentView()), GetViewport());
}

TEST_F(UI_MultiColumnTreeTest, ScrollsToRowsAndToTheTop) {
    Fill(100);
    Show();
    mTree->ScrollToRow(Row(5));
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
    mTree->ScrollToRow(Row(50));
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 51 * GetRowHeight() - GetViewport()->height());
    mTree->ScrollToRow(Row(30));
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 30 * GetRowHeight());
    mTree->ScrollToTop();
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
    mTree->ScrollToRow(RowPtr(new zelui::controls::UI_MultiColumnTreeRow));
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
}

TEST_F(UI_MultiColumnTreeTest, NewRowsCanBeScrolledToAtOnce) {
    Show();
    Fill(100);
    mTree->ScrollToRow(Row(99));
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 100 * GetRowHeight() - GetViewport()->height());
}

TEST_F(UI_MultiColumnTreeTest, RefillingKeepsThePlaceAndScrollToTopDoesNot) {
    Fill(100);
    Show();
    GetTable()->verticalScrollBar()->setValue(500);
    mTree->RemoveAllRows();
    Fill(90);
    Sync();
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 500);
    mTree->RemoveAllRows();
    Fill(90);
    mTree->ScrollToTop();
    Sync();
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 0);
    GetTable()->verticalScrollBar()->setValue(500);
    mTree->RemoveAllRows();
    Fill(12);
    Sync();
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 12 * GetRowHeight() - GetViewport()->height());
}

TEST_F(UI_MultiColumnTreeTest, ComesBackTheSameAfterScrollingWhatIsRoundIt) {
    Fill(100);
    mHeader->SetSortColumn(12);
    Show();
    Click(3, 1);
    GetTable()->verticalScrollBar()->setValue(37);
    GetTable()->clearFocus();
    const QImage image = Grab();
    mStage.ScrollAwayAndBack(*mTree);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 3"});
    EXPECT_EQ(mRowsTold, 1);
    EXPECT_EQ(GetTable()->verticalScrollBar()->value(), 37);
    EXPECT_EQ(GetQtHeader()->sectionSize(1), 140);
    Sync();
    EXPECT_EQ(Grab(), image);
    EXPECT_TRUE(mTree->IsRowVisible(Row(1)));
}

// Selecting with the mouse

TEST_F(UI_MultiColumnTreeTest, AClickSelectsItsRowAndNoOther) {
    Fill(5);
    Show();
    Click(1, 1);
    Click(3, 2);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 3"});
    EXPECT_EQ(mRowsTold, 2);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), -1) << "cells cannot be selected unless it is set";
    EXPECT_EQ(mCellsTold, 0);
    Click(3, 2);
    EXPECT_EQ(mRowsTold, 2);
    EXPECT_TRUE(mTree->UI_HasKeyboardFocus(false));
}

TEST_F(UI_MultiColumnTreeTest, AClickSelectsItsCellWhereCellsCanBe) {
    mTree->SetSupportUserSelectableCells(true);
    Fill(5);
    Show();
    Click(1, 2);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 2);
    Click(1, 1);
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), 1);
    EXPECT_EQ(mRowsTold, 1);
    EXPECT_EQ(mCellsTold, 2);
    Click(2, 1);
    EXPECT_EQ(mCellsTold, 3);
    EXPECT_EQ(mRowsTold, 2);
}

TEST_F(UI_MultiColumnTreeTest, NothingIsSelectedWhereRowsCannotBe) {
    mTree->SetSupportUserSelectableRows(false);
    Fill(5);
    Show();
    Click(1, 1);
    EXPECT_FALSE(mTree->IsAnyRowSelected());
    mTree->SelectRow(Row(2));
    EXPECT_EQ(GetSelectedNames(), Names{"Row 2"}) << "the program may";
}

TEST_F(UI_MultiColumnTreeTest, AClickBelowTheRowsSelectsNoneWhereThatIsSupported) {
    Fill(3);
    Show();
    Click(1, 1);
    const QPoint below(50, GetRowHeight() * 5);
    QTest::mouseClick(GetViewport(), Qt::LeftButton, Qt::NoModifier, below);
    EXPECT_TRUE(mTree->IsAnyRowSelected());
    mTree->SetSupportDeselectAllOnEmptyTreeClick(true);
    mTree->SetSupportNoneSelected(false);
    QTest::mouseClick(GetViewport(), Qt::LeftButton, Qt::NoModifier, below);
    EXPECT_TRUE(mTree->IsAnyRowSelected());
    mTree->SetSupportNoneSelected(true);
    QTest::mouseClick(GetViewport(), Qt::LeftButton, Qt::NoModifier, below);
    EXPECT_FALSE(mTree->IsAnyRowSelected());
    EXPECT_EQ(mRowsTold, 2);
}

TEST_F(UI_MultiColumnTreeTest, ControlAndShiftSelectSeveralWhereThatIsSupported) {
    Fill(8);
    Show();
    Click(1, 1);
    Click(3, 1, Qt::ShiftModifier);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 3"});
    Click(3, 1, Qt::ControlModifier);
    EXPECT_TRUE(GetSelectedNames().empty());
    mTree->SetSupportMultipleSelections(true);
    Click(5, 1);
    Click(2, 1, Qt::ShiftModifier);
    EXPECT_EQ(GetSelectedNames(), (Names{"Row 2", "Row 3", "Row 4", "Row 5"}));
    Click(7, 1, Qt::ControlModifier);
    Click(3, 1, Qt::ControlModifier);
    EXPECT_EQ(GetSelectedNames(), (Names{"Row 2", "Row 4", "Row 5", "Row 7"}));
    EXPECT_EQ(mTree->GetSelectedCellOfSelectedRow(), -1);
}

TEST_F(UI_MultiColumnTreeTest, TheLastSelectedRowStaysWhereOneIsNeeded) {
    mTree->SetSupportMultipleSelections(true);
    mTree->SetSupportNoneSelected(false);
    Fill(4);
    Show();
    Click(1, 1);
    Click(1, 1, Qt::ControlModifier);
    EXPECT_EQ(GetSelectedNames(), Names{"Row 1"});
}

TEST_F(UI_MultiColumnTreeTest, DraggingSelectsSeveralAndScrollsAtTheEdge) {
    mTree->SetSupportMultipleSelections(true);
    Fill(100);
    Show();
    Drag(2, PointIn(4, 1));
    EXPECT_EQ(GetSelectedNames(), (Names{"Row 2", "Row 3", "Row 4"}));
    Release();
    Drag(2, QPoint(50, GetViewport()->height() + 30));
    EXPECT_TRUE(ProcessUntil([this] { return mTree->GetSelectedRows().size() > 15; }));
    EXPECT_GT(GetTable()->verticalScrollBar()->value(), 0);
    Release();
}

TEST_F(UI_MultiColumnTreeTest, DraggingSelectsNoOthersInAListOfOne) {
    Fill(10);
    Show();
    Drag(2, PointIn(5, 1));
    Release();
    EXPECT_EQ(GetSelectedNames(), Names{"Row 2"});
}

TEST_F(UI_MultiColumnTreeTest, ADisabledListTakesNoInput) {
    Fill(5);
    Show();
    mTree->UI_SetDisabled(true);
    QTest::mouseClick(GetViewport(), Qt::LeftButton, Qt::NoModifier, PointIn(1, 1));
    EXPECT_FALSE(mTree->IsAnyRowSelected());
    EXPECT_FALSE(mTree->UI_DoKeyboardEvent({zelui::ui::KeyboardEvent::kKeyDown, 40, 0, {}, false}));
}

// Selecting by the program

TEST_F(UI_MultiColumnTreeTest, SelectedRowsComeInTheOrderInWhichTheyAreShown) {
    mTree->SetSupportMultipleSelections(true);
    Fill({"a", "b", "c", "d"});
    Show();
    Click(3, 1);
    Click(0, 1, Qt::ControlModifier);
    EXPECT_EQ(GetSelectedNames(), (Names{"a", "d"}));
    mHeader->SetSortColumn(12);
    mHeader->SetSortDirection(false);
    mTree->SortTree();
    EXPECT_EQ(GetSelectedNames(), (Names{"d", "a"}));
    mTree->DeselectAll();
    EXPECT_TRUE(mTree->GetSelectedRows().empty());
}

TEST_F(UI_MultiColumnTreeTest, EveryChangeOfTheSelectionIsToldOnce) {
    Fill(3);
    mTree->SelectRow(Row(1));
    mTree->SelectRow(Row(1));
    EXPECT_EQ(mRowsTold, 1);
    mTree->RemoveAllRows();
    EXPECT_EQ(mRowsTold, 2) << "the selected row has gone";
    EXPECT_FALSE(mTree->IsAnyRowSelected());
    mTree->RemoveAllRows();
    mTree->DeselectAll();
    mTree->SelectRow(RowPtr(new zelui::controls::UI_MultiColumnTreeRow));
    EXPECT_EQ(mRowsTold, 2);
}

TEST_F(UI_MultiColumnTreeTest, ASelectionCallbackMayChangeRowsAndSelection) {
    Fill(5);
    Show();
    mTree->SetRowsSelectionChangedCallback([this] {
        mTree->SetRowsSelectionChangedCallback([this] { ++mRowsTold; });
        mTree->RemoveAllRows();
        Fill({"x", "y"});
        mTree->SelectRow(Row(1));
    });
    Click(2, 1);
    EXPECT_EQ(GetSelectedNames(), Names{"y"});
    EXPECT_EQ(mRowsTold, 2);
}

TEST_F(UI_MultiColumnTreeTest, ASelectionCallbackMayLetGoOfTheTreeOrThrow) {
    Fill(5);
    Show();
    const QPointer<QWidget> table = GetTable();
    mTree->SetRowsSelectionChangedCallback([this] {
        mStage.GetRoot()->ChildRemove(std::exchange(mTree, nullptr));
        throw std::runtime_error("gone");
    });
    QTest::ignoreMessage(QtWarningMsg, "A list's selection handler threw an exception: gone");
    Click(2, 1);
    EXPECT_TRUE(WaitUntilGone(table));
}

// Drawing

TEST_F(UI_MultiColumnTreeTest, TheCellsInViewAreDrawnAndNoOthers) {
    Fill(1000);
    Show();
    Grab();
    EXPECT_EQ(mDrawn.size(), 30u);
    EXPECT_TRUE(mDrawn.count("Row 9/2"));
    mTree->SelectRow(Row(4));
    Grab();
    EXPECT_TRUE(mDrawn.count("Row 4/0*"));
    EXPECT_TRUE(mDrawn.count("Row 5/0"));
    EXPECT_EQ(mDrawn.size(), 30u);
}

TEST_F(UI_MultiColumnTreeTest, CellsAreDrawnInTheTreesOwnCoordinatesAndCutOff) {
    Fill(3);
    Show();
    std::map<std::string, zelcore::geom::RectF> cells;
    onDraw = [&](zelui::drawbot::Drawbot& drawbot, const RowPtr& row, int column, const zelcore::geom::RectF& cell) {
        cells[mNames[row.get()] + std::to_string(column)] = cell;
        if (column == 1 && row == Row(1)) drawbot.FillRect({-5000, -5000, 10000, 10000}, {1, 0, 0, 1});
    };
    const QImage image = Grab();
    const zelcore::geom::RectF content = mTree->GetContentView()->UI_GetLocalRectF();
    const float height = mTree->GetRowHeight();
    EXPECT_EQ(cells["Row 21"], (zelcore::geom::RectF{kTreeFrame.left + content.left + 70,
                                                     kTreeFrame.top + content.top + 2 * height, 140, height}));
    int red = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) red += image.pixelColor(x, y) == QColor(255, 0, 0) ? 1 : 0;
    }
    EXPECT_EQ(red, 140 * GetRowHeight());
    EXPECT_EQ(image.pixelColor(static_cast<int>(content.left) + 71, static_cast<int>(content.top + height) + 1),
              QColor(255, 0, 0));
}

TEST_F(UI_MultiColumnTreeTest, HighlightAndTextFitInTheLightAndInTheDarkTheme) {
    Fill(3);
    Show();
    for (const auto theme : {zelui::ui::Theme::kLight, zelui::ui::Theme::kDark}) {
        zelui::ui::Theme::Get().Choose(theme);
        mTree->SelectRow(Row(1));
        mBefore->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
        EXPECT_EQ(ColorAt(1, 1), GetRole(QPalette::Highlight)) << "also without the focus";
        EXPECT_EQ(ColorAt(0, 1), GetRole(QPalette::Base));
        const zelui::drawbot::ColorRGBA text = zelui::ui::GetColor(zelui::ui::kColorListTextHighlighted);
        EXPECT_GT(std::abs(text.red - static_cast<float>(ColorAt(1, 1).redF())), 0.5f);
    }
}

TEST_F(UI_MultiColumnTreeTest, TheFocusCanBeSeenOnTheSelectedRowAndOnTheFrameWhereThatIsSet) {
    Fill(3);
    Show();
    mTree->SelectRow(Row(1));
    mBefore->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    const QImage without = Grab();
    GiveFocus();
    const QImage with = Grab();
    EXPECT_NE(with, without);
    EXPECT_EQ(with.pixelColor(with.width() / 2, 0), without.pixelColor(with.width() / 2, 0));
    mTree->SetIndicateFocus(true);
    EXPECT_EQ(Grab().pixelColor(with.width() / 2, 0), GetRole(QPalette::Highlight));
    mTree->SetIndicateFocus(false);
    mTree->RemoveAllRows();
    EXPECT_EQ(Grab().pixelColor(with.width() / 2, 0), GetRole(QPalette::Highlight)) << "no row could show it";
}

TEST_F(UI_MultiColumnTreeTest, ADrawingThatChangesTheListIsFollowedByTheNewOne) {
    Fill(20);
    Show();
    onDraw = [this](zelui::drawbot::Drawbot&, const RowPtr&, int, const zelcore::geom::RectF&) {
        onDraw = {};
        mTree->RemoveAllRows();
        Fill({"only"});
        mHeader->SetSortColumn(12);
        mTree->SortTree();
        mTree->ScrollToRow(Row(0));
    };
    Grab();
    Grab();
    EXPECT_EQ(mDrawn, (std::set<std::string>{"only/0", "only/1", "only/2"}));
}

TEST_F(UI_MultiColumnTreeTest, ADrawingMayLetGoOfTheTreeOrThrow) {
    Fill(20);
    Show();
    QTest::ignoreMessage(QtWarningMsg, "Drawing a cell threw an exception: no ink");
    const QPointer<QWidget> table = GetTable();
    onDraw = [this](zelui::drawbot::Drawbot&, const RowPtr&, int, const zelcore::geom::RectF&) {
        onDraw = {};
        mStage.GetRoot()->ChildRemove(std::exchange(mTree, nullptr));
        throw std::runtime_error("no ink");
    };
    GetTable()->viewport()->repaint();
    EXPECT_TRUE(WaitUntilGone(table));
}

TEST_F(UI_MultiColumnTreeTest, ADrawbotThatIsKeptDrawsNothingLater) {
    Fill(1);
    Show();
    boost::intrusive_ptr<zelui::drawbot::Drawbot> kept;
    onDraw = [&kept](zelui::drawbot::Drawbot& drawbot, const RowPtr&, int, const zelcore::geom::RectF&) {
        drawbot.PushClip({0, 0, 1, 1});
        kept = &drawbot;
    };
    Grab();
    ASSERT_NE(kept, nullptr);
    kept->FillRect({0, 0, 100, 100}, {1, 0, 0, 1});
    EXPECT_EQ(ColorAt(2, 1), GetRole(QPalette::Base));
}

// Texts

TEST_F(UI_MultiColumnTreeTest, ACutOffTextIsInTheToolTip) {
    Fill({"short", "A <b>long</b> name that does not fit into its column at all, however one looks at it"});
    Show();
    EXPECT_FALSE(ShowsToolTip(0, 1));
    EXPECT_TRUE(ShowsToolTip(1, 1));
    EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;long"));
    EXPECT_FALSE(ShowsToolTip(1, 2));
    EXPECT_FALSE(ShowsToolTip(5, 1));
}

TEST_F(UI_MultiColumnTreeTest, TextsAreOneLineOfBoundedLength) {
    Fill({"a\nb", std::string(2000000, 'x')});
    Show();
    EXPECT_EQ(GetTable()->model()->index(0, 1).data().toString(), "a b");
    EXPECT_LT(GetTable()->model()->index(1, 1).data().toString().size(), 3000);
}

TEST_F(UI_MultiColumnTreeTest, ATextFunctionMayThrowOrChangeTheRows) {
    Fill(5);
    Show();
    mTree->SetCellTextFunction([](const RowPtr&, int) -> zelcore::ustring { throw std::runtime_error("no text"); });
    QTest::ignoreMessage(QtWarningMsg, "The texts of a list threw an exception: no text");
    EXPECT_EQ(GetTable()->model()->index(0, 1).data().toString(), "");
    mTree->SetCellTextFunction([this](const RowPtr&, int) {
        mTree->RemoveAllRows();
        return U("last");
    });
    EXPECT_EQ(GetTable()->model()->index(0, 1).data().toString(), "last");
    Sync();
    EXPECT_EQ(GetTable()->model()->rowCount(), 0);
}

TEST_F(UI_MultiColumnTreeTest, ItsEdgeHasTheColourOfTheLinesRoundGroupsOnBothThemes) {
    using zelui::ui::Theme;
    Fill(3);
    Show();
    for (const Theme::Choice choice : {Theme::kDark, Theme::kLight}) {
        Theme::Get().Choose(choice);
        const zelui::drawbot::ColorRGBA frame = zelui::ui::GetColor(zelui::ui::kColorFrame);
        const QColor edge = GetTable()->grab().toImage().pixelColor(0, GetTable()->height() / 2);
        EXPECT_NEAR(edge.redF(), frame.red, 0.02) << choice;
        EXPECT_NEAR(edge.greenF(), frame.green, 0.02) << choice;
        EXPECT_NEAR(edge.blueF(), frame.blue, 0.02) << choice;
    }
}

}  // namespace zeltests
