#include <zelui/UI_MultiColumnTreeHeaderRow.h>

#include <stdexcept>

#include "CallOut.h"
#include "TreeImpl.h"

namespace zelui {
namespace controls {

UI_MultiColumnTreeHeaderRow::UI_MultiColumnTreeHeaderRow(UI_MultiColumnTree& tree)
    : mTree(&tree), mSortColumn(0), mAscending(true) {
    tree.mImpl->GetColumns().SetHeader(this);
    tree.mImpl->Changed();
}

UI_MultiColumnTreeHeaderRow::~UI_MultiColumnTreeHeaderRow() = default;

void UI_MultiColumnTreeHeaderRow::AppendColumn(const zelcore::ustring& title, ColumnID id) {
    if (id == 0 || GetIndexOf(id) >= 0) throw std::invalid_argument("UI_MultiColumnTreeHeaderRow: not a new column id");
    if (GetColumnCount() >= UI_MultiColumnTree::kMaxColumns)
        throw std::length_error("UI_MultiColumnTreeHeaderRow: too many columns");
    mColumns.push_back({id, title, static_cast<float>(UI_MultiColumnTree::TreeColumns::kUsualWidth)});
    TellTree();
}

UI_MultiColumnTreeHeaderRow::ColumnID UI_MultiColumnTreeHeaderRow::GetColumnAt(int index) const {
    return index >= 0 && index < GetColumnCount() ? mColumns[static_cast<std::size_t>(index)].id : 0;
}

int UI_MultiColumnTreeHeaderRow::GetIndexOf(ColumnID id) const {
    for (int i = 0; i < GetColumnCount(); ++i) {
        if (mColumns[static_cast<std::size_t>(i)].id == id) return i;
    }
    return -1;
}

int UI_MultiColumnTreeHeaderRow::GetColumnCount() const { return static_cast<int>(mColumns.size()); }

void UI_MultiColumnTreeHeaderRow::SetColumnWidth(ColumnID id, float width) {
    const int index = GetIndexOf(id);
    if (index < 0) return;
    TellTree();
    ChangeWidth(index, width);
}

void UI_MultiColumnTreeHeaderRow::ChangeWidth(int index, float width) {
    Column& column = mColumns[static_cast<std::size_t>(index)];
    const float bounded = UI_MultiColumnTree::TreeColumns::Bound(width, column.width);
    if (bounded == column.width) return;
    column.width = bounded;
    if (mWidthChanged.empty()) return;
    // It may be replaced, and the header let go of, while it runs.
    const boost::intrusive_ptr<UI_MultiColumnTreeHeaderRow> held(this);
    const ColumnWidthChangedCallback callback = mWidthChanged;
    const ColumnID id = column.id;
    CallOut("A list's handler of column widths", [&] { callback(id); });
}

float UI_MultiColumnTreeHeaderRow::GetColumnWidth(ColumnID id) const {
    const int index = GetIndexOf(id);
    return index >= 0 ? mColumns[static_cast<std::size_t>(index)].width : 0.0f;
}

void UI_MultiColumnTreeHeaderRow::SetSortColumn(ColumnID id) {
    mSortColumn = GetIndexOf(id) >= 0 ? id : 0;
    TellTree();
}

UI_MultiColumnTreeHeaderRow::ColumnID UI_MultiColumnTreeHeaderRow::GetSortColumn() const { return mSortColumn; }

void UI_MultiColumnTreeHeaderRow::SetSortDirection(bool ascending) {
    mAscending = ascending;
    TellTree();
}

bool UI_MultiColumnTreeHeaderRow::IsSortDirectionAscending() const { return mAscending; }

void UI_MultiColumnTreeHeaderRow::SetColumnBestFitWidthCallback(const ColumnBestFitWidthCallback& callback) {
    mBestFitWidth = callback;
}

void UI_MultiColumnTreeHeaderRow::SetColumnWidthChangedCallback(const ColumnWidthChangedCallback& callback) {
    mWidthChanged = callback;
}

void UI_MultiColumnTreeHeaderRow::TellTree() {
    if (mTree != nullptr) mTree->mImpl->Changed();
}

}  // namespace controls
}  // namespace zelui
