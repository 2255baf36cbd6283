#include "AccessibleNode.h"
#include "TreeStage.h"

namespace zeltests {
namespace {

/// A list as screen readers have it.
class UI_MultiColumnTreeAccessibilityTest : public TreeStage {
protected:
    UI_MultiColumnTreeAccessibilityTest() { MakeHeader(); }
};

}  // namespace

TEST_F(UI_MultiColumnTreeAccessibilityTest, ScreenReadersAreToldTextsTitlesAndSelection) {
    mWantsControls = true;
    Fill({"Zam Gate", "Zam Comp"});
    Show();
    CheckboxAt(1)->SetChecked(true);
    mTree->SelectRow(Row(1));
    mTree->UI_SetAccessibleName(U("Plug-ins"));
    Sync();
    QAccessibleInterface* const list = GetAccessible(*mTree);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->text(QAccessible::Name), "Plug-ins");
    QAccessibleTableInterface* const table = list->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->columnCount(), 3);
    EXPECT_EQ(table->cellAt(1, 1)->text(QAccessible::Name), "Zam Comp");
    EXPECT_TRUE(table->cellAt(1, 0)->state().checked);
    EXPECT_FALSE(table->cellAt(0, 0)->state().checked);
    EXPECT_EQ(table->columnDescription(1), "Name");
    EXPECT_EQ(table->selectedRows(), QList<int>{1});
    EXPECT_TRUE(table->isRowSelected(1));
}

TEST_F(UI_MultiColumnTreeAccessibilityTest, ScreenReadersSelectRows) {
    Fill(3);
    Show();
    QAccessibleTableInterface* const table = GetAccessible(*mTree)->tableInterface();
    EXPECT_TRUE(table->selectRow(2));
    EXPECT_EQ(GetSelectedNames(), Names{"Row 2"});
    EXPECT_EQ(mRowsTold, 1);
    Sync();
    EXPECT_EQ(table->selectedRows(), QList<int>{2});
}

TEST_F(UI_MultiColumnTreeAccessibilityTest, WithAScreenReaderTenThousandRowsAskForFewTexts) {
    QAccessible::setActive(true);
    int asked = 0;
    mTree->SetCellTextFunction([&](const RowPtr& row, int column) {
        ++asked;
        return TextOf(row, column);
    });
    mWantsControls = true;
    Fill(10000);
    Show();
    GiveFocus();
    for (int i = 0; i < 20; ++i) Press(Qt::Key_PageDown);
    mTree->RemoveAllRows();
    Fill(10000);
    Sync();
    QAccessible::setActive(false);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_LT(asked, 5000);
    EXPECT_EQ(GetTable()->findChildren<QCheckBox*>().size(), 10);
}

}  // namespace zeltests
