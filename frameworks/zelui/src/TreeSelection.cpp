#include "TreeSelection.h"

#include <algorithm>

#include "CallOut.h"
#include "TreeImpl.h"

namespace zelui {
namespace controls {

namespace {

void TellSelection(const UI_MultiColumnTree::SelectionChangedCallback& callback) {
    // It may be replaced while it runs.
    UI_MultiColumnTree::SelectionChangedCallback called;
    called = callback;
    if (!called.empty()) CallOut("A list's selection handler", called);
}

}  // namespace

/// One change of the selection: tells at its end what is different from the beginning.
class UI_MultiColumnTree::TreeSelection::Change {
public:
    explicit Change(TreeSelection& selection)
        : mSelection(selection),
          mTree(selection.mImpl.Hold()),
          mGeneration(selection.mGeneration),
          mCurrent(selection.mCurrent),
          mCell(selection.GetCell()) {}

    ~Change() {
        const bool rowsChanged = mGeneration != mSelection.mGeneration;
        const int cell = mSelection.GetCell();
        // The same column of another row is another cell.
        const bool cellChanged = cell != mCell || (cell >= 0 && mCurrent != mSelection.mCurrent);
        if (!rowsChanged && !cellChanged && mCurrent == mSelection.mCurrent) return;
        ++mSelection.mGeneration;
        Impl& impl = mSelection.mImpl;
        impl.Changed();
        if (rowsChanged) TellSelection(impl.GetCallbacks().rowsSelection);
        if (cellChanged) TellSelection(impl.GetCallbacks().cellSelection);
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

private:
    TreeSelection& mSelection;
    const boost::intrusive_ptr<UI_MultiColumnTree> mTree;
    const unsigned mGeneration;
    const RowPtr mCurrent;
    const int mCell;
};

UI_MultiColumnTree::TreeSelection::TreeSelection(Impl& impl) : mImpl(impl) {}

UI_MultiColumnTree::Rows UI_MultiColumnTree::TreeSelection::GetRows() const {
    Rows rows;
    if (mCount == 0) return rows;
    rows.reserve(mCount);
    for (const RowPtr& row : mImpl.GetRows()) {
        if (row->mIsSelected) rows.push_back(row);
    }
    return rows;
}

bool UI_MultiColumnTree::TreeSelection::IsSelected(const RowPtr& row) const { return row && row->mIsSelected; }

int UI_MultiColumnTree::TreeSelection::GetCell() const {
    const bool isOfOnlyRow = mCount == 1 && IsSelected(mCurrent) && mImpl.GetAbilities().cells;
    return isOfOnlyRow && mCell < mImpl.GetColumns().GetCount() ? mCell : -1;
}

void UI_MultiColumnTree::TreeSelection::Set(const RowPtr& row, bool isSelected) {
    if (row->mIsSelected == isSelected) return;
    row->mIsSelected = isSelected;
    mCount = isSelected ? mCount + 1 : mCount - 1;
    ++mGeneration;
}

// Nothing is selected when `first` is behind `last`.
void UI_MultiColumnTree::TreeSelection::SetAll(std::size_t first, std::size_t last) {
    const Rows& rows = mImpl.GetRows();
    for (std::size_t i = 0; i < rows.size(); ++i) Set(rows[i], i >= first && i <= last);
}

void UI_MultiColumnTree::TreeSelection::SelectOnly(const RowPtr& row) { SelectOnly(row, mCell); }

void UI_MultiColumnTree::TreeSelection::SelectOnly(const RowPtr& row, int cell) {
    const RowPtr held = row;  // NOLINT(performance-unnecessary-copy-initialization)
    const Change change(*this);
    if (held)
        SetAll(held->mPlace, held->mPlace);
    else
        SetAll(1, 0);
    mCurrent = held;
    mAnchor = held;
    mCell = held ? cell : -1;
}

void UI_MultiColumnTree::TreeSelection::Toggle(const RowPtr& row, int cell) {
    const bool mayBeNone = mImpl.GetAbilities().noneSelected;
    if (!mImpl.GetAbilities().multiple) {
        if (row->mIsSelected && mayBeNone) return SelectOnly(nullptr);
        return SelectOnly(row, cell);
    }
    const Change change(*this);
    if (!row->mIsSelected || mCount > 1 || mayBeNone) Set(row, !row->mIsSelected);
    mCurrent = row;
    mAnchor = row;
    mCell = cell;
}

void UI_MultiColumnTree::TreeSelection::ExtendTo(const RowPtr& row) {
    if (!mImpl.GetAbilities().multiple) return SelectOnly(row);
    const Change change(*this);
    if (!mAnchor) mAnchor = mCurrent ? mCurrent : row;
    SetAll(std::min(mAnchor->mPlace, row->mPlace), std::max(mAnchor->mPlace, row->mPlace));
    mCurrent = row;
}

void UI_MultiColumnTree::TreeSelection::SelectAll() {
    if (mImpl.GetRows().empty()) return;
    const Change change(*this);
    SetAll(0, mImpl.GetRows().size() - 1);
    if (!mCurrent) mCurrent = mImpl.GetRows().front();
}

void UI_MultiColumnTree::TreeSelection::MoveTo(const RowPtr& row) {
    const Change change(*this);
    mCurrent = row;
}

void UI_MultiColumnTree::TreeSelection::Enter(const RowPtr& row, int cell) {
    if (!row->mIsSelected) return SelectOnly(row, cell);
    const Change change(*this);
    mCurrent = row;
    mCell = cell;
}

void UI_MultiColumnTree::TreeSelection::SetCell(int cell) {
    const Change change(*this);
    mCell = cell;
}

void UI_MultiColumnTree::TreeSelection::OnRowsRemoved() {
    const Change change(*this);
    if (mCount > 0) ++mGeneration;
    mCount = 0;
    mCurrent.reset();
    mAnchor.reset();
    mCell = -1;
}

}  // namespace controls
}  // namespace zelui
