#pragma once

#include <zelui/UI_MultiColumnTree.h>

namespace zelui {
namespace controls {

/// Which rows of a tree are selected, which of them is the current one that the keys move from, and which cell of it is
/// selected. Every change is told as soon as it is complete; whoever is told may change rows and selection again, and
/// let go of the tree.
class UI_MultiColumnTree::TreeSelection {
public:
    explicit TreeSelection(Impl& impl);

    bool IsAny() const { return mCount > 0; }
    Rows GetRows() const;
    bool IsSelected(const RowPtr& row) const;
    const RowPtr& GetCurrent() const { return mCurrent; }
    /// The selected cell of the only selected row; -1 for none.
    int GetCell() const;
    /// Changes with every change of the selection.
    unsigned GetGeneration() const { return mGeneration; }

    /// This row and no other; null for none.
    void SelectOnly(const RowPtr& row);
    void SelectOnly(const RowPtr& row, int cell);
    void Toggle(const RowPtr& row, int cell);
    /// All from the row where the selection began up to this one.
    void ExtendTo(const RowPtr& row);
    void SelectAll();
    /// Makes it the current row without selecting it.
    void MoveTo(const RowPtr& row);
    /// Somebody works in that cell: its row is selected, as one of several when it was so before.
    void Enter(const RowPtr& row, int cell);
    void SetCell(int cell);
    /// All rows have gone.
    void OnRowsRemoved();

private:
    class Change;
    void Set(const RowPtr& row, bool isSelected);
    void SetAll(std::size_t first, std::size_t last);

    Impl& mImpl;
    std::size_t mCount = 0;
    unsigned mGeneration = 0;
    RowPtr mCurrent;
    RowPtr mAnchor;
    int mCell = -1;
};

}  // namespace controls
}  // namespace zelui
