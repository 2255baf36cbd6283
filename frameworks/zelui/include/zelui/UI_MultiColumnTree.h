#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include <zelui/UI_Container.h>
#include <zelui/UI_ControlView.h>
#include <zelui/UI_MultiColumnTreeRow.h>
#include <zelui/UI_SubView.h>

namespace zelui {
namespace controls {

class UI_MultiColumnTreeHeaderRow;

/// A list in columns: rows that are drawn by whoever fills the list, with a header to sort by where one is made, and
/// controls in single cells where they are wanted. A row costs no widget; controls in cells exist while their row can
/// be seen, because whoever wants them makes them when the list says that a row has become visible. Ten thousand rows
/// are scrolled, sorted and replaced in milliseconds.
///
/// Columns are known by their index, from 0, and, where a header is made, by the id that the header gave them. All
/// sizes are display units; cells are rectangles in the coordinates of the tree's own frame, as for UI_Draw.
///
/// Keyboard: arrows, Page Up and Down, Home and End move the row, with Shift they select up to it and with Control they
/// select nothing, where several can be selected; Left and Right move the cell, where cells can be selected, and scroll
/// otherwise. Control and A selects all, Control and Space this row or not this row, Control and a digit sorts.
/// Space uses the first control of the selected cell, or, when that cell has none, the row's first one that is not
/// disabled; Return uses that of the selected cell, unless it is a check box. Tab goes on to the next cell of the row
/// that has a control, and beyond the last one out of the list.
/// Screen readers are told the texts of SetCellTextFunction.
///
/// A control in a cell that has no text of its own is known to screen readers by the column's title and the first text
/// of the row, unless it has a name. The focus of a control whose row leaves the view goes to the list.
///
/// Main thread. Callbacks may let go of the tree, and change its rows. What they throw is reported and ends there, but
/// for what SortTree calls. What has changed is laid out and shown soon, all at once; a row that is drawn is not
/// changed under the drawing. A tree that goes tells nobody.
class ZELUI_API UI_MultiColumnTree : public UI_ControlView, public ui::UI_Container {
public:
    /// Rows are held by the tree and by whoever keeps them.
    typedef boost::intrusive_ptr<UI_MultiColumnTreeRow> RowPtr;
    /// Rows in an order that is said where they come from.
    typedef std::vector<RowPtr> Rows;

    /// Draws the cell of a row in column `index`. `isHighlighted`: the row, or this cell, is selected.
    typedef boost::function<void(drawbot::Drawbot& drawbot, const RowPtr& row, int index,
                                 const zelcore::geom::RectF& cell, bool isHighlighted)>
        DrawCellOfRowCallback;
    /// Told of a row that came into view or left it.
    typedef boost::function<void(const RowPtr& row)> RowVisibilityChangedCallback;
    /// Told nothing: ask the tree what is selected now.
    typedef boost::function<void()> SelectionChangedCallback;
    /// What a column is sorted by, for one row.
    typedef boost::function<zelcore::ustring(const RowPtr& row, int index)> CellSortDataFunction;
    /// Gives the text of a cell, by its row and the place of its column.
    typedef boost::function<zelcore::ustring(const RowPtr& row, int index)> CellTextFunction;

    UI_MultiColumnTree();

    // What the list can do. All false unless set, but for SetSupportUserSelectableRows

    /// Whether rows can have rows below them. There are none so far: true is the same as false.
    void SetAllowChildren(bool allow);
    /// Whether a frame shows that the list has the keyboard focus. The current row shows it always, and without one the
    /// frame does.
    void SetIndicateFocus(bool indicate);
    /// Whether it may be that no row is selected. Without it a click always leaves one.
    void SetSupportNoneSelected(bool support);
    /// Whether a click below the last row selects none, where that may be.
    void SetSupportDeselectAllOnEmptyTreeClick(bool support);
    /// Whether several rows can be selected at once.
    void SetSupportMultipleSelections(bool support);
    /// Whether typing selects the next row whose first text begins with what is typed.
    void SetSupportNonArrowKeysToSelectRow(bool support);
    /// Whether people can select rows, and single cells in them. The program always can.
    void SetSupportUserSelectableRows(bool support);
    /// Whether people can select single cells of rows. The program always can.
    void SetSupportUserSelectableCells(bool support);
    /// For a tree without a header: 1 unless set, at most kMaxColumns. A header counts its columns itself.
    void SetNumberOfColumns(int count);
    /// Whole and at least 10; 0 for a column that is not there.
    void SetColumnWidth(int index, float width);
    /// How wide the column at that place is, in display units.
    float GetColumnWidth(int index) const;
    /// How many columns there are.
    int GetColumnCount() const;
    /// More columns than this are not made.
    static constexpr int kMaxColumns = 64;

    /// Has `callback` draw the cells; without one they show their texts.
    void SetDrawCellOfRowCallback(const DrawCellOfRowCallback& callback);
    /// Called for each row that comes into view or leaves it, by scrolling, sorting, resizing or because the list is
    /// shown or hidden; soon after it happened, from the main loop and before it is painted, or at once by
    /// SyncVisibility. IsRowVisible says which it was. A row that is removed while it is visible leaves it before it
    /// goes.
    void SetRowVisibilityChangedCallback(const RowVisibilityChangedCallback& callback);
    /// Called after every change of which rows are selected, or which cell is: by the user, by the program, and because
    /// rows were removed.
    void SetRowsSelectionChangedCallback(const SelectionChangedCallback& callback);
    /// Called after every change of which cell is selected.
    void SetCellSelectionChangedCallback(const SelectionChangedCallback& callback);
    /// Has `function` say by what rows are sorted.
    void SetCellSortDataFunction(const CellSortDataFunction& function);
    /// The texts of cells for screen readers, for tool tips over what is cut off, and for typing ahead. Without it the
    /// cells are blank to them.
    void SetCellTextFunction(const CellTextFunction& function);

    // Rows

    /// Adds a row at its end, unsorted. `isLast` false says that more follow at once. A row is in one tree at a time:
    /// throws std::invalid_argument for one that is in a tree, and for null.
    void AppendRow(const RowPtr& row, bool isLast = true);
    /// A new row, appended.
    RowPtr CreateAndAppendRow(bool isLast = true);
    /// Takes all rows out, those that are visible leave first. What is scrolled to stays as far as there are rows when
    /// the list is shown next.
    void RemoveAllRows();
    /// How many there are, and the one at a place of the shown order; null beyond the end.
    std::size_t GetRowCount() const;
    /// The row at a place of the order that is shown, from 0; null beyond the last.
    RowPtr GetRowAt(std::size_t place) const;
    /// Sorts by the header's sort column and direction, equal rows stay in their order. Nothing without a header or a
    /// sort column. Without a sort function by the texts. Each key is asked for once; a function that throws or changes
    /// the rows leaves the order, and what it throws reaches the caller. Rows that are appended later stand unsorted at
    /// the end until the next time. The selection stays with its rows. Keys are compared without regard to case, then
    /// exactly; digits in them as numbers ("2" is before "10").
    void SortTree();
    /// Shows the list from its first row on.
    void ScrollToTop();
    /// Scrolls as little as is needed for the row to be seen in full.
    void ScrollToRow(const RowPtr& row);
    /// How high every row is, in display units.
    float GetRowHeight() const;
    /// Whether the row was told to be visible last.
    bool IsRowVisible(const RowPtr& row) const;
    /// Has visibility changes that are still to be told told now. Nothing while some are being told: that goes on until
    /// none is left.
    void SyncVisibility();

    // Selection

    /// Whether at least one row is selected.
    bool IsAnyRowSelected() const;
    /// In the order in which they are shown.
    Rows GetSelectedRows() const;
    /// This row and no other; nothing for one that is not in the tree.
    void SelectRow(const RowPtr& row);
    /// Also where people cannot.
    void DeselectAll();
    /// Index of the selected cell of the only selected row; -1 when there is none.
    int GetSelectedCellOfSelectedRow() const;

    /// Null without one.
    boost::intrusive_ptr<UI_MultiColumnTreeHeaderRow> GetHeaderRow() const;
    /// The part in which the rows are shown, inside the frame and below the header; a node for its frame.
    boost::intrusive_ptr<ui::UI_SubView> GetContentView() const;

    using UI_ControlView::UI_AsContainer;
    ui::UI_Container* UI_AsContainer() override;
    /// What the list's own widget does with a key, for whoever hands one over. Tab and Shift with Tab: true when the
    /// focus has gone on to another control of the row, or back to the list; false leaves the key to others.
    bool UI_DoKeyboardEvent(const ui::KeyboardEvent& event) override;
    /// Shift with Tab comes from behind, to the last control of the current row.
    bool UI_GainKeyboardFocus(ui::FocusChangeReason reason) override;

protected:
    ~UI_MultiColumnTree() override;
    ui::UI_Node& UI_GetContainerNode() override;
    std::unique_ptr<Peer> UI_MakePeer() override;
    void UI_SizeChanged(const zelcore::geom::RectF& frame) override;

private:
    friend class UI_MultiColumnTreeHeaderRow;
    friend class UI_MultiColumnTreeRow;
    class Impl;
    class TreeCells;
    class TreeColumns;
    class TreeKeys;
    class TreePeer;
    class TreeSelection;
    class TreeVisibility;
    const std::unique_ptr<Impl> mImpl;
};

}  // namespace controls
}  // namespace zelui
