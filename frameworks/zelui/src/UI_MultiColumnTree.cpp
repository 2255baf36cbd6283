#include <zelui/UI_MultiColumnTree.h>

#include "TreeImpl.h"
#include "TreePeer.h"

namespace zelui {
namespace controls {

// Who takes its address on Windows wants it to be in the library.
constexpr int UI_MultiColumnTree::kMaxColumns;

UI_MultiColumnTree::UI_MultiColumnTree() : UI_ControlView(true), mImpl(std::make_unique<Impl>(*this)) {
    ChildPushBack(&mImpl->GetContentView());
}

UI_MultiColumnTree::~UI_MultiColumnTree() {
    if (Peer* const peer = UI_GetPeer()) static_cast<TreePeer*>(peer)->Forget();
}

ui::UI_Container* UI_MultiColumnTree::UI_AsContainer() { return this; }

ui::UI_Node& UI_MultiColumnTree::UI_GetContainerNode() { return *this; }

std::unique_ptr<ui::UI_Node::Peer> UI_MultiColumnTree::UI_MakePeer() {
    return std::make_unique<TreePeer>(*this, *mImpl);
}

void UI_MultiColumnTree::UI_SizeChanged(const zelcore::geom::RectF& frame) {
    UI_ControlView::UI_SizeChanged(frame);
    mImpl->OnViewChanged();
}

bool UI_MultiColumnTree::UI_DoKeyboardEvent(const ui::KeyboardEvent& event) {
    const boost::intrusive_ptr<UI_MultiColumnTree> held = mImpl->Hold();
    return !UI_IsDisabled() && mImpl->GetKeys().Do(event);
}

bool UI_MultiColumnTree::UI_GainKeyboardFocus(ui::FocusChangeReason reason) {
    const boost::intrusive_ptr<UI_MultiColumnTree> held = mImpl->Hold();
    const bool comesFromBehind = reason == ui::kFocusByReverse && !UI_HasKeyboardFocus(true);
    if (comesFromBehind && mImpl->GetKeys().EnterFromBehind()) return true;
    return UI_ControlView::UI_GainKeyboardFocus(reason);
}

// What the list can do

void UI_MultiColumnTree::SetAllowChildren(bool) {}

void UI_MultiColumnTree::SetIndicateFocus(bool indicate) {
    mImpl->GetAbilities().indicateFocus = indicate;
    mImpl->Changed();
}

void UI_MultiColumnTree::SetSupportNoneSelected(bool support) { mImpl->GetAbilities().noneSelected = support; }

void UI_MultiColumnTree::SetSupportDeselectAllOnEmptyTreeClick(bool support) {
    mImpl->GetAbilities().deselectOnEmptyClick = support;
}

void UI_MultiColumnTree::SetSupportMultipleSelections(bool support) {
    mImpl->GetAbilities().multiple = support;
    mImpl->Changed();
}

void UI_MultiColumnTree::SetSupportNonArrowKeysToSelectRow(bool support) { mImpl->GetAbilities().typeAhead = support; }

void UI_MultiColumnTree::SetSupportUserSelectableRows(bool support) {
    mImpl->GetAbilities().rows = support;
    mImpl->Changed();
}

void UI_MultiColumnTree::SetSupportUserSelectableCells(bool support) {
    mImpl->GetAbilities().cells = support;
    mImpl->Changed();
}

void UI_MultiColumnTree::SetNumberOfColumns(int count) {
    mImpl->GetColumns().SetPlainCount(count);
    mImpl->Changed();
}

void UI_MultiColumnTree::SetColumnWidth(int index, float width) {
    mImpl->GetColumns().SetWidth(index, width);
    mImpl->Changed();
}

float UI_MultiColumnTree::GetColumnWidth(int index) const {
    return static_cast<float>(mImpl->GetColumns().GetWidth(index));
}

int UI_MultiColumnTree::GetColumnCount() const { return mImpl->GetColumns().GetCount(); }

void UI_MultiColumnTree::SetDrawCellOfRowCallback(const DrawCellOfRowCallback& callback) {
    mImpl->GetCallbacks().draw = callback;
    mImpl->Changed();
}

void UI_MultiColumnTree::SetRowVisibilityChangedCallback(const RowVisibilityChangedCallback& callback) {
    mImpl->GetCallbacks().visibility = callback;
}

void UI_MultiColumnTree::SetRowsSelectionChangedCallback(const SelectionChangedCallback& callback) {
    mImpl->GetCallbacks().rowsSelection = callback;
}

void UI_MultiColumnTree::SetCellSelectionChangedCallback(const SelectionChangedCallback& callback) {
    mImpl->GetCallbacks().cellSelection = callback;
}

void UI_MultiColumnTree::SetCellSortDataFunction(const CellSortDataFunction& function) {
    mImpl->GetCallbacks().sortData = function;
}

void UI_MultiColumnTree::SetCellTextFunction(const CellTextFunction& function) {
    mImpl->GetCallbacks().text = function;
}

// Rows

void UI_MultiColumnTree::AppendRow(const RowPtr& row, bool) { mImpl->Append(row); }

UI_MultiColumnTree::RowPtr UI_MultiColumnTree::CreateAndAppendRow(bool isLast) {
    const RowPtr row(new UI_MultiColumnTreeRow);
    AppendRow(row, isLast);
    return row;
}

void UI_MultiColumnTree::RemoveAllRows() { mImpl->RemoveAll(); }

std::size_t UI_MultiColumnTree::GetRowCount() const { return mImpl->GetRows().size(); }

UI_MultiColumnTree::RowPtr UI_MultiColumnTree::GetRowAt(std::size_t place) const {
    return place < GetRowCount() ? mImpl->GetRows()[place] : RowPtr();
}

void UI_MultiColumnTree::SortTree() { mImpl->Sort(); }

void UI_MultiColumnTree::ScrollToTop() { mImpl->ScrollTo(mImpl->GetScrollX(), 0); }

void UI_MultiColumnTree::ScrollToRow(const RowPtr& row) {
    if (mImpl->Contains(row)) mImpl->ScrollToRow(*row);
}

float UI_MultiColumnTree::GetRowHeight() const { return static_cast<float>(mImpl->GetRowHeight()); }

bool UI_MultiColumnTree::IsRowVisible(const RowPtr& row) const { return mImpl->Contains(row) && row->mIsVisible; }

void UI_MultiColumnTree::SyncVisibility() { mImpl->GetVisibility().Sync(); }

// Selection

bool UI_MultiColumnTree::IsAnyRowSelected() const { return mImpl->GetSelection().IsAny(); }

UI_MultiColumnTree::Rows UI_MultiColumnTree::GetSelectedRows() const { return mImpl->GetSelection().GetRows(); }

void UI_MultiColumnTree::SelectRow(const RowPtr& row) {
    if (mImpl->Contains(row)) mImpl->GetSelection().SelectOnly(row);
}

void UI_MultiColumnTree::DeselectAll() { mImpl->GetSelection().SelectOnly(nullptr); }

int UI_MultiColumnTree::GetSelectedCellOfSelectedRow() const { return mImpl->GetSelection().GetCell(); }

boost::intrusive_ptr<UI_MultiColumnTreeHeaderRow> UI_MultiColumnTree::GetHeaderRow() const {
    return mImpl->GetColumns().GetHeader();
}

boost::intrusive_ptr<ui::UI_SubView> UI_MultiColumnTree::GetContentView() const { return &mImpl->GetContentView(); }

}  // namespace controls
}  // namespace zelui
