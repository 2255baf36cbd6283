#pragma once

#include "TreeCells.h"
#include "TreeColumns.h"
#include "TreeKeys.h"
#include "TreeSelection.h"
#include "TreeVisibility.h"
#include "TreeWake.h"

namespace zelui {
namespace controls {

/// The rows of a tree, where they stand, and its parts. Changes are laid out and shown together, later, or when
/// somebody needs it; never while one of the list's own calls for texts or drawing is running, as Qt is in the middle
/// of something then.
class UI_MultiColumnTree::Impl {
public:
    /// What the list can do.
    struct Abilities {
        bool indicateFocus = false;
        bool noneSelected = false;
        bool deselectOnEmptyClick = false;
        bool multiple = false;
        bool typeAhead = false;
        bool rows = true;
        bool cells = false;
    };
    struct Callbacks {
        DrawCellOfRowCallback draw;
        RowVisibilityChangedCallback visibility;
        SelectionChangedCallback rowsSelection;
        SelectionChangedCallback cellSelection;
        CellSortDataFunction sortData;
        CellTextFunction text;
    };
    /// For the time of a call that must not find the widget changed when it comes back. Holds the tree.
    class Calling {
    public:
        explicit Calling(Impl& impl);
        ~Calling();
        Calling(const Calling&) = delete;
        Calling& operator=(const Calling&) = delete;

    private:
        const boost::intrusive_ptr<UI_MultiColumnTree> mTree;
        Impl& mImpl;
    };

    explicit Impl(UI_MultiColumnTree& tree);
    ~Impl();

    UI_MultiColumnTree& GetTree() const { return mTree; }
    /// Keeps the tree for the time of a call that may let go of it; null while nobody holds it yet, or any more.
    boost::intrusive_ptr<UI_MultiColumnTree> Hold() const;
    ui::UI_SubView& GetContentView() const { return *mContentView; }
    Abilities& GetAbilities() { return mAbilities; }
    Callbacks& GetCallbacks() { return mCallbacks; }
    TreeColumns& GetColumns() { return mColumns; }
    TreeCells& GetCells() { return mCells; }
    TreeSelection& GetSelection() { return mSelection; }
    TreeVisibility& GetVisibility() { return mVisibility; }
    TreeKeys& GetKeys() { return mKeys; }

    // Rows

    const Rows& GetRows() const { return mRows; }
    RowPtr GetRow(int place) const;
    bool Contains(const RowPtr& row) const;
    void Append(const RowPtr& row);
    void RemoveAll();
    void Sort();
    /// By that column, or the other way round when it is that one already.
    void SortByUser(int column);
    zelcore::ustring GetTitle(int column) const;
    /// Blank where there is none, or the host's function failed.
    zelcore::ustring GetText(const RowPtr& row, int column);
    /// That of the first column that has one.
    zelcore::ustring GetFirstText(const RowPtr& row);
    /// Changes when other rows stand at other places.
    unsigned GetGeneration() const { return mGeneration; }

    // Where they stand, in whole display units

    int GetRowHeight() const;
    /// 0 without a header.
    int GetHeaderHeight() const;
    /// In the content view.
    zelcore::geom::RectF GetCellFrame(const UI_MultiColumnTreeRow& row, int column) const;
    int GetScrollX() const { return mScrollX; }
    int GetScrollY() const { return mScrollY; }
    void ScrollTo(int x, int y);
    void ScrollToRow(const UI_MultiColumnTreeRow& row);
    /// The widget shows that part now.
    void OnScrolled(int x, int y);
    /// The widget's size, or whether it can be seen, may be another.
    void OnViewChanged();
    bool CanBeSeen() const;

    // Bringing up to date

    /// Rows, columns, abilities or selection are others now; soon the widget, the cells and visibility will be.
    void Changed();
    /// Brings the widget and the cells up to date now.
    void Flush();
    /// Has visibility looked at soon.
    void Wake();

private:
    void OnWake();
    void PlaceContentView();
    QWidget* GetWidget() const;

    UI_MultiColumnTree& mTree;
    const boost::intrusive_ptr<ui::UI_SubView> mContentView;
    Abilities mAbilities;
    Callbacks mCallbacks;
    Rows mRows;
    unsigned mGeneration = 0;
    int mScrollX = 0;
    int mScrollY = 0;
    int mCalls = 0;
    bool mIsDirty = false;
    TreeColumns mColumns;
    TreeCells mCells;
    TreeSelection mSelection;
    TreeVisibility mVisibility;
    TreeKeys mKeys;
    TreeWake mWake;
};

}  // namespace controls
}  // namespace zelui
