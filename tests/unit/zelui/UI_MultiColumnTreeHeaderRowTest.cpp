#include <limits>
#include <QHelpEvent>
#include <QImage>
#include <QToolTip>
#include <stdexcept>

#include "TreeStage.h"

namespace zeltests {
namespace {

class UI_MultiColumnTreeHeaderRowTest : public TreeStage {
protected:
    UI_MultiColumnTreeHeaderRowTest() {
        MakeHeader();
        Fill({"b", "c", "a"});
        Show();
    }

    void ClickTitle(int column) {
        const QPoint point(GetQtHeader()->sectionViewportPosition(column) + 20, 10);
        QTest::mouseClick(GetQtHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, point);
        Sync();
    }
    QPoint GetBorder(int column) const {
        return QPoint(GetQtHeader()->sectionViewportPosition(column) + GetQtHeader()->sectionSize(column) - 1, 10);
    }
    QString GetTitleAt(int column) const { return GetTable()->model()->headerData(column, Qt::Horizontal).toString(); }
};

}  // namespace

TEST_F(UI_MultiColumnTreeHeaderRowTest, ColumnsAreKnownByTheirIds) {
    EXPECT_EQ(mHeader->GetColumnCount(), 3);
    EXPECT_EQ(mTree->GetColumnCount(), 3);
    EXPECT_EQ(mHeader->GetColumnAt(1), 12u);
    EXPECT_EQ(mHeader->GetIndexOf(13), 2);
    EXPECT_EQ(mHeader->GetColumnAt(3), 0u);
    EXPECT_EQ(mHeader->GetColumnAt(-1), 0u);
    EXPECT_EQ(mHeader->GetIndexOf(5), -1);
    EXPECT_EQ(mTree->GetHeaderRow(), mHeader);
    EXPECT_EQ(GetQtHeader()->count(), 3);
    EXPECT_EQ(GetTitleAt(1), "Name");
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, AnIdThatIsZeroOrThereIsRefused) {
    EXPECT_THROW(mHeader->AppendColumn(U("Again"), 12), std::invalid_argument);
    EXPECT_THROW(mHeader->AppendColumn(U("None"), 0), std::invalid_argument);
    EXPECT_EQ(mHeader->GetColumnCount(), 3);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, ThereAreAtMostSixtyFourColumns) {
    for (HeaderRow::ColumnID id = 100; mHeader->GetColumnCount() < Tree::kMaxColumns; ++id)
        mHeader->AppendColumn(U("More"), id);
    EXPECT_THROW(mHeader->AppendColumn(U("Too many"), 1000), std::length_error);
    EXPECT_EQ(mTree->GetColumnCount(), 64);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, WidthsAreWholeAndBounded) {
    mHeader->SetColumnWidth(12, 120.6f);
    EXPECT_EQ(mHeader->GetColumnWidth(12), 121.0f);
    mHeader->SetColumnWidth(12, -5);
    EXPECT_EQ(mHeader->GetColumnWidth(12), 10.0f);
    mHeader->SetColumnWidth(12, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(mHeader->GetColumnWidth(12), 10.0f);
    mHeader->SetColumnWidth(12, std::numeric_limits<float>::infinity());
    EXPECT_LE(mHeader->GetColumnWidth(12), 1000000.0f);
    mHeader->SetColumnWidth(99, 50);
    EXPECT_EQ(mHeader->GetColumnWidth(99), 0.0f);
    mTree->SetColumnWidth(1, 75);
    EXPECT_EQ(mHeader->GetColumnWidth(12), 75.0f);
    Sync();
    EXPECT_EQ(GetQtHeader()->sectionSize(1), 75);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, DraggingABorderSetsTheWidth) {
    const QPoint border = GetBorder(1);
    QTest::mousePress(GetQtHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, border);
    QTest::mouseMove(GetQtHeader()->viewport(), border + QPoint(15, 0));
    QMouseEvent move(QEvent::MouseMove, border + QPoint(30, 0),
                     GetQtHeader()->viewport()->mapToGlobal(border + QPoint(30, 0)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(GetQtHeader()->viewport(), &move);
    QTest::mouseRelease(GetQtHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, border + QPoint(30, 0));
    EXPECT_EQ(mHeader->GetColumnWidth(12), 170.0f);
    EXPECT_EQ(mHeader->GetSortColumn(), 0u);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, AWidthThatChangesIsToldWhoeverChangesIt) {
    std::vector<std::pair<HeaderRow::ColumnID, float>> told;
    mHeader->SetColumnWidthChangedCallback(
        [&](HeaderRow::ColumnID id) { told.emplace_back(id, mHeader->GetColumnWidth(id)); });
    GetQtHeader()->resizeSection(1, 200);
    mHeader->SetColumnWidth(13, 111);
    mTree->SetColumnWidth(0, 77);
    Sync();
    const std::vector<std::pair<HeaderRow::ColumnID, float>> expected = {{12, 200}, {13, 111}, {11, 77}};
    EXPECT_EQ(told, expected);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, AWidthThatStaysIsNotTold) {
    int told = 0;
    mHeader->SetColumnWidthChangedCallback([&](HeaderRow::ColumnID) { ++told; });
    mHeader->SetColumnWidth(12, 140.3f);
    mHeader->SetColumnWidth(99, 50);
    mTree->SetColumnWidth(2, 100);
    mTree->SetColumnWidth(-1, 50);
    Sync();
    EXPECT_EQ(told, 0);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, WhoIsToldOfAWidthMayTakeTheHeaderAwayAndThrow) {
    mHeader->SetColumnWidthChangedCallback([&](HeaderRow::ColumnID) {
        mHeader = new HeaderRow(*mTree);
        throw std::runtime_error("on purpose");
    });
    GetQtHeader()->resizeSection(1, 200);
    Sync();
    EXPECT_EQ(mTree->GetHeaderRow(), mHeader);
    EXPECT_EQ(mHeader->GetColumnCount(), 0);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, ADoubleClickOnABorderAsksForTheBestWidth) {
    std::vector<int> asked;
    mHeader->SetColumnBestFitWidthCallback([&asked](int index) {
        asked.push_back(index);
        return 222.0f;
    });
    QTest::mouseDClick(GetQtHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, GetBorder(1));
    EXPECT_EQ(asked, std::vector<int>{1});
    EXPECT_EQ(mHeader->GetColumnWidth(12), 222.0f);
    Sync();
    EXPECT_EQ(GetQtHeader()->sectionSize(1), 222);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, WithoutABestWidthADoubleClickChangesNothing) {
    QTest::mouseDClick(GetQtHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, GetBorder(1));
    mHeader->SetColumnBestFitWidthCallback([](int) -> float { throw std::runtime_error("no width"); });
    QTest::ignoreMessage(QtWarningMsg, "The best width of a column threw an exception: no width");
    QTest::mouseDClick(GetQtHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, GetBorder(1));
    EXPECT_EQ(mHeader->GetColumnWidth(12), 140.0f);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, AClickOnATitleSortsUpwardsThenTheOtherWay) {
    ClickTitle(1);
    EXPECT_EQ(GetNames(), (Names{"a", "b", "c"}));
    EXPECT_EQ(mHeader->GetSortColumn(), 12u);
    EXPECT_TRUE(mHeader->IsSortDirectionAscending());
    EXPECT_EQ(GetQtHeader()->sortIndicatorSection(), 1);
    EXPECT_TRUE(GetQtHeader()->isSortIndicatorShown());
    ClickTitle(1);
    EXPECT_EQ(GetNames(), (Names{"c", "b", "a"}));
    EXPECT_FALSE(mHeader->IsSortDirectionAscending());
    EXPECT_EQ(GetQtHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    ClickTitle(0);
    EXPECT_EQ(mHeader->GetSortColumn(), 11u);
    EXPECT_TRUE(mHeader->IsSortDirectionAscending());
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, ControlAndADigitSortByThatColumn) {
    GiveFocus();
    Press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(GetNames(), (Names{"a", "b", "c"}));
    Press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(GetNames(), (Names{"c", "b", "a"}));
    Press(Qt::Key_9, Qt::ControlModifier);
    EXPECT_EQ(mHeader->GetSortColumn(), 12u);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, TitlesAreOneLineOfBoundedLengthAndTheWholeIsInTheToolTip) {
    mHeader->AppendColumn(U("<b>bold</b>\nnext"), 20);
    mHeader->AppendColumn(zelcore::ustring(1000000, 'x'), 21);
    mHeader->SetColumnWidth(11, 30);
    Sync();
    EXPECT_EQ(GetTitleAt(3), "<b>bold</b> next");
    EXPECT_LT(GetTitleAt(4).size(), 3000);
    QHelpEvent cutOff(QEvent::ToolTip, QPoint(10, 10), GetQtHeader()->viewport()->mapToGlobal(QPoint(10, 10)));
    QCoreApplication::sendEvent(GetQtHeader()->viewport(), &cutOff);
    EXPECT_TRUE(QToolTip::text().contains("Enabled"));
    const QPoint whole(GetQtHeader()->sectionViewportPosition(1) + 10, 10);
    QHelpEvent inFull(QEvent::ToolTip, whole, GetQtHeader()->viewport()->mapToGlobal(whole));
    QCoreApplication::sendEvent(GetQtHeader()->viewport(), &inFull);
    EXPECT_TRUE(ProcessUntil([] { return !QToolTip::isVisible(); }));
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, OutlivesItsTreeHarmlessly) {
    mStage.GetRoot()->ChildRemove(std::exchange(mTree, nullptr));
    mHeader->SetSortColumn(12);
    mHeader->SetColumnWidth(12, 50);
    mHeader->AppendColumn(U("Late"), 30);
    EXPECT_EQ(mHeader->GetColumnCount(), 4);
    EXPECT_EQ(mHeader->GetColumnWidth(12), 50.0f);
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, ANewHeaderTakesThePlaceOfTheFormer) {
    const HeaderRowPtr other(new HeaderRow(*mTree));
    EXPECT_EQ(mTree->GetHeaderRow(), other);
    EXPECT_EQ(mTree->GetColumnCount(), 0);
    other->AppendColumn(U("Only"), 1);
    mHeader->AppendColumn(U("Not there any more"), 31);
    Sync();
    EXPECT_EQ(GetQtHeader()->count(), 1);
    EXPECT_EQ(GetTitleAt(0), "Only");
}

TEST_F(UI_MultiColumnTreeHeaderRowTest, BesideTheLastColumnTheHeaderGoesOn) {
    const int end = GetQtHeader()->length();
    ASSERT_LT(end + 10, GetQtHeader()->viewport()->width());
    const QImage picture = GetQtHeader()->viewport()->grab().toImage();
    // Beside the title of a column, at several heights, and as far from the columns.
    for (int y = 1; y < picture.height(); y += 4) EXPECT_EQ(picture.pixel(end + 5, y), picture.pixel(end - 20, y)) << y;
}

}  // namespace zeltests
