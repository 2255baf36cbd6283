#include <stdexcept>

#include "TreeStage.h"

namespace zeltests {
namespace {

class UI_MultiColumnTreeSortTest : public TreeStage {
protected:
    UI_MultiColumnTreeSortTest() {
        MakeHeader();
        mTree->SetCellSortDataFunction([this](const RowPtr& row, int column) {
            ++mKeysAsked;
            return TextOf(row, column);
        });
        mHeader->SetSortColumn(12);
    }

    Names Sorted(const Names& names) {
        mTree->RemoveAllRows();
        Fill(names);
        mTree->SortTree();
        return GetNames();
    }

    int mKeysAsked = 0;
};

}  // namespace

TEST_F(UI_MultiColumnTreeSortTest, CaseDoesNotMatterUntilAllElseIsTheSame) {
    EXPECT_EQ(Sorted({"beta", "Alpha", "BETA", "alpha", "Beta"}), (Names{"Alpha", "alpha", "BETA", "Beta", "beta"}));
    EXPECT_EQ(Sorted({"\xC3\xA4ther", "\xC3\x84ONE"}), (Names{"\xC3\x84ONE", "\xC3\xA4ther"}));
    // Letters beyond the first plane are folded as well.
    EXPECT_EQ(Sorted({"\xF0\x90\x90\xA8"
                      "b",
                      "\xF0\x90\x90\x80"
                      "a"}),
              (Names{"\xF0\x90\x90\x80"
                     "a",
                     "\xF0\x90\x90\xA8"
                     "b"}));
}

TEST_F(UI_MultiColumnTreeSortTest, DigitsAreNumbers) {
    EXPECT_EQ(Sorted({"Gate 10", "Gate 2", "Gate 1", "Gate"}), (Names{"Gate", "Gate 1", "Gate 2", "Gate 10"}));
    EXPECT_EQ(Sorted({"v1.10", "v1.9", "v1.09"}), (Names{"v1.09", "v1.9", "v1.10"}));
    EXPECT_EQ(Sorted({"a", "2", "!", "10"}), (Names{"!", "2", "10", "a"}));
    EXPECT_EQ(Sorted({"99999999999999999999999", "100000000000000000000000", "0"}),
              (Names{"0", "99999999999999999999999", "100000000000000000000000"}));
}

TEST_F(UI_MultiColumnTreeSortTest, EqualRowsStayInTheirOrderInBothDirections) {
    Fill({"b", "same", "same", "a"});
    const RowPtr first = Row(1);
    const RowPtr second = Row(2);
    mTree->SortTree();
    EXPECT_EQ(GetNames(), (Names{"a", "b", "same", "same"}));
    EXPECT_EQ(Row(2), first);
    mHeader->SetSortDirection(false);
    mTree->SortTree();
    EXPECT_EQ(GetNames(), (Names{"same", "same", "b", "a"}));
    EXPECT_EQ(Row(0), first);
    EXPECT_EQ(Row(1), second);
}

TEST_F(UI_MultiColumnTreeSortTest, SettingColumnOrDirectionSortsNothingYet) {
    Fill({"b", "a"});
    mHeader->SetSortColumn(12);
    mHeader->SetSortDirection(false);
    EXPECT_EQ(GetNames(), (Names{"b", "a"}));
    EXPECT_EQ(mKeysAsked, 0);
}

TEST_F(UI_MultiColumnTreeSortTest, WithoutASortColumnNothingIsSorted) {
    Fill({"b", "a"});
    mHeader->SetSortColumn(0);
    mTree->SortTree();
    mHeader->SetSortColumn(99);
    EXPECT_EQ(mHeader->GetSortColumn(), 0u);
    mTree->SortTree();
    EXPECT_EQ(GetNames(), (Names{"b", "a"}));
}

TEST_F(UI_MultiColumnTreeSortTest, AKeyIsAskedForOncePerRow) {
    Fill(500);
    mTree->SortTree();
    EXPECT_EQ(mKeysAsked, 500);
}

TEST_F(UI_MultiColumnTreeSortTest, RowsAppendedLaterStandAtTheEndUntilTheNextTime) {
    Sorted({"b", "c"});
    Fill({"a"});
    EXPECT_EQ(GetNames(), (Names{"b", "c", "a"}));
    mTree->SortTree();
    EXPECT_EQ(GetNames(), (Names{"a", "b", "c"}));
}

TEST_F(UI_MultiColumnTreeSortTest, WithoutASortFunctionTheTextsAreSortedBy) {
    mTree->SetCellSortDataFunction({});
    EXPECT_EQ(Sorted({"b", "a"}), (Names{"a", "b"}));
}

TEST_F(UI_MultiColumnTreeSortTest, TheSelectionStaysWithItsRows) {
    Fill({"c", "b", "a"});
    mTree->SelectRow(Row(0));
    mTree->SortTree();
    EXPECT_EQ(GetSelectedNames(), Names{"c"});
    EXPECT_EQ(mTree->GetSelectedRows().front(), Row(2));
    EXPECT_EQ(mRowsTold, 1);
}

TEST_F(UI_MultiColumnTreeSortTest, OfKeysWithoutEndTheBeginningCounts) {
    const std::string longText(3000000, 'x');
    EXPECT_EQ(Sorted({longText + "b", "y", longText + "a"}), (Names{longText + "b", longText + "a", "y"}));
}

TEST_F(UI_MultiColumnTreeSortTest, AFunctionThatThrowsLeavesTheOrder) {
    Fill({"b", "a"});
    mTree->SetCellSortDataFunction([](const RowPtr&, int) -> zelcore::ustring { throw std::runtime_error("no key"); });
    EXPECT_THROW(mTree->SortTree(), std::runtime_error) << "the program's own call";
    EXPECT_EQ(GetNames(), (Names{"b", "a"}));
}

TEST_F(UI_MultiColumnTreeSortTest, AFunctionThatChangesTheRowsEndsTheSorting) {
    Fill({"b", "a"});
    int asked = 0;
    mTree->SetCellSortDataFunction([this, &asked](const RowPtr& row, int column) {
        ++asked;
        const zelcore::ustring text = TextOf(row, column);
        mTree->RemoveAllRows();
        Fill({"z", "y"});
        return text;
    });
    mTree->SortTree();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(GetNames(), (Names{"z", "y"}));
}

}  // namespace zeltests
