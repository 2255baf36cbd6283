#pragma once

#include <optional>
#include <utility>

#include <zelui/UI_MultiColumnTree.h>

namespace zelui {
namespace controls {

/// The nodes of a row's cells, by column; null where none was asked for.
struct UI_MultiColumnTreeRow::Cells {
    std::vector<boost::intrusive_ptr<ui::UI_SubView>> views;
};

/// The nodes for controls in cells, of the few rows that have any.
class UI_MultiColumnTree::TreeCells {
public:
    typedef boost::intrusive_ptr<UI_ControlView> ControlPtr;
    /// A row and a column of it; null and -1 for none.
    typedef std::pair<RowPtr, int> Cell;

    explicit TreeCells(Impl& impl);
    /// Leaves the rows without cells.
    ~TreeCells();

    boost::intrusive_ptr<ui::UI_SubView> Get(const RowPtr& row, int column);
    void Drop(const RowPtr& row);
    void DropAll();
    /// Puts all of them where their cells are now.
    void Place();

    /// The cell that `node` is in.
    Cell Find(const ui::UI_Node* node) const;
    /// The first control in a cell that is shown; null without one.
    ControlPtr FindControl(const UI_MultiColumnTreeRow& row, int column) const;
    /// The nearest cell behind `column`, or before it, with a control that the Tab key stops at.
    ControlPtr FindTabStop(const UI_MultiColumnTreeRow& row, int column, bool forward) const;
    std::optional<bool> GetCheckState(const UI_MultiColumnTreeRow& row, int column) const;
    /// Gives controls of the row that say nothing of themselves a name for screen readers: the column's title and the
    /// row's first text.
    void NameControls(const RowPtr& row);

private:
    ui::UI_SubView* FindView(const UI_MultiColumnTreeRow& row, int column) const;

    Impl& mImpl;
    Rows mRows;  ///< those with cells
};

}  // namespace controls
}  // namespace zelui
