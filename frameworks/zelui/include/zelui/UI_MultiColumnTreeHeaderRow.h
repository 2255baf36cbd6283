#pragma once

#include <cstdint>
#include <vector>

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <zelcore/RefCountedObject.h>
#include <zelcore/ustring.h>

#include <zelui/Export.h>

namespace zelui {
namespace controls {

class UI_MultiColumnTree;

/// The header of a tree: the columns with their titles and widths, and which of them the rows are sorted by. People
/// drag the borders between titles, double-click one for the width that fits, and click a title to sort by it: upwards
/// first, the other way round the next time. By keyboard: Control and a digit sorts by that column.
class ZELUI_API UI_MultiColumnTreeHeaderRow : public zelcore::utility::RefCountedObject {
public:
    /// Names a column whatever its place; 0 is none.
    typedef std::uint32_t ColumnID;
    /// Gives the width at which the column at that place shows everything, in display units.
    typedef boost::function<float(int index)> ColumnBestFitWidthCallback;
    /// Told of a column that became wider or narrower.
    typedef boost::function<void(ColumnID id)> ColumnWidthChangedCallback;

    /// The header of that tree from now on, without columns. The tree holds it; a former one belongs to no tree any
    /// more. Harmless after the tree has gone.
    explicit UI_MultiColumnTreeHeaderRow(UI_MultiColumnTree& tree);

    /// `id` is above 0 and none that is there already (throws std::invalid_argument otherwise); at most
    /// UI_MultiColumnTree::kMaxColumns (throws std::length_error). 100 wide until it is set.
    void AppendColumn(const zelcore::ustring& title, ColumnID id);
    /// The id of the column at `index`; 0 when there is none.
    ColumnID GetColumnAt(int index) const;
    /// -1 when there is none.
    int GetIndexOf(ColumnID id) const;
    /// How many columns there are.
    int GetColumnCount() const;
    /// In display units, whole and at least 10; 0 for a column that is not there.
    void SetColumnWidth(ColumnID id, float width);
    /// How wide the column is, in display units; 0 for one that is not there.
    float GetColumnWidth(ColumnID id) const;

    /// The column that rows are sorted by; 0 for none. Setting it, or the direction, sorts nothing yet: see
    /// UI_MultiColumnTree::SortTree. One that is not there counts as none.
    void SetSortColumn(ColumnID id);
    /// The column that rows are sorted by; 0 for none.
    ColumnID GetSortColumn() const;
    /// Sorts upwards or downwards; tells nobody.
    void SetSortDirection(bool ascending);
    /// Whether it sorts upwards.
    bool IsSortDirectionAscending() const;

    /// Asked for the width of the column at `index` that everything in it fits into, when its border is double-clicked.
    void SetColumnBestFitWidthCallback(const ColumnBestFitWidthCallback& callback);
    /// Called after a column has got another width: from the user, who may go on dragging, or from the program.
    void SetColumnWidthChangedCallback(const ColumnWidthChangedCallback& callback);

protected:
    ~UI_MultiColumnTreeHeaderRow() override;

private:
    friend class UI_MultiColumnTree;
    struct Column {
        ColumnID id;
        zelcore::ustring title;
        float width;
    };

    void TellTree();
    void ChangeWidth(int index, float width);

    UI_MultiColumnTree* mTree;  ///< null once the tree has gone
    std::vector<Column> mColumns;
    ColumnID mSortColumn;
    bool mAscending;
    ColumnBestFitWidthCallback mBestFitWidth;
    ColumnWidthChangedCallback mWidthChanged;
};

}  // namespace controls
}  // namespace zelui
