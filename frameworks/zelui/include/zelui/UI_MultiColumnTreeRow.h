#pragma once

#include <cstddef>
#include <memory>

#include <boost/intrusive_ptr.hpp>
#include <zelcore/RefCountedObject.h>

#include <zelui/Export.h>

namespace zelui {
namespace ui {
class UI_SubView;
}
namespace controls {

class UI_MultiColumnTree;

/// One row of a tree. Holds nothing of what it shows: whoever fills the tree knows that by the row. Small, as there are
/// many; the tree holds its rows.
class ZELUI_API UI_MultiColumnTreeRow : public zelcore::utility::RefCountedObject {
public:
    UI_MultiColumnTreeRow();

    /// The tree that it is in; null when it is in none.
    UI_MultiColumnTree* GetTree() const { return mTree; }
    /// The node for controls in the cell of that column; its frame is the cell's, so that a control at 0, 0 stands in
    /// the cell's left top corner. Made when it is first asked for, and let go of when the row leaves the view, after
    /// that was told, or the tree. Null for a column that is not there and a row that is in no tree.
    boost::intrusive_ptr<ui::UI_SubView> GetCellView(int index);

protected:
    ~UI_MultiColumnTreeRow() override;

private:
    friend class UI_MultiColumnTree;
    struct Cells;

    UI_MultiColumnTree* mTree;
    std::size_t mPlace;  ///< in the shown order
    bool mIsSelected;
    bool mIsVisible;
    std::unique_ptr<Cells> mCells;
};

}  // namespace controls
}  // namespace zelui
