#include "TreeCells.h"

#include <algorithm>

#include <zelui/UI_Button.h>
#include <zelui/UI_Checkbox.h>

#include "TreeImpl.h"

namespace zelui {
namespace controls {

namespace {

bool IsUsableControl(const UI_ControlView& control) {
    return control.UI_WantsKeyboardFocus() || dynamic_cast<const UI_Button*>(&control) != nullptr;
}

bool IsTabStop(const UI_ControlView& control) {
    return control.UI_WantsKeyboardFocusFromAdvance() && !control.UI_IsDisabled();
}

UI_ControlView* FindShown(ui::UI_Node& node, bool (*isWanted)(const UI_ControlView&)) {
    if (!node.UI_IsShown()) return nullptr;
    UI_ControlView* const control = dynamic_cast<UI_ControlView*>(&node);
    if (control != nullptr && isWanted(*control)) return control;
    ui::UI_Container* const container = node.UI_AsContainer();
    for (std::size_t i = 0; container != nullptr && i < container->ChildCount(); ++i) {
        if (UI_ControlView* const found = FindShown(*container->ChildAt(i), isWanted)) return found;
    }
    return nullptr;
}

bool SaysNothing(const UI_ControlView& control) {
    const UI_Button* const button = dynamic_cast<const UI_Button*>(&control);
    return control.UI_GetAccessibleName().empty() && (button == nullptr || button->GetText().empty());
}

}  // namespace

UI_MultiColumnTree::TreeCells::TreeCells(Impl& impl) : mImpl(impl) {}

UI_MultiColumnTree::TreeCells::~TreeCells() { DropAll(); }

ui::UI_SubView* UI_MultiColumnTree::TreeCells::FindView(const UI_MultiColumnTreeRow& row, int column) const {
    const std::size_t at = static_cast<std::size_t>(column);
    return column >= 0 && row.mCells && at < row.mCells->views.size() ? row.mCells->views[at].get() : nullptr;
}

boost::intrusive_ptr<ui::UI_SubView> UI_MultiColumnTree::TreeCells::Get(const RowPtr& row, int column) {
    if (column < 0 || column >= mImpl.GetColumns().GetCount()) return nullptr;
    if (ui::UI_SubView* const view = FindView(*row, column)) return view;
    if (!row->mCells) {
        row->mCells = std::make_unique<UI_MultiColumnTreeRow::Cells>();
        mRows.push_back(row);
    }
    std::vector<boost::intrusive_ptr<ui::UI_SubView>>& views = row->mCells->views;
    const std::size_t at = static_cast<std::size_t>(column);
    if (at >= views.size()) views.resize(at + 1);
    const boost::intrusive_ptr<ui::UI_SubView> view(new ui::UI_SubView);
    views[at] = view;
    view->UI_SetLocalRectF(mImpl.GetCellFrame(*row, column));
    view->UI_Show(true);
    mImpl.GetContentView().ChildPushBack(view);
    return view;
}

void UI_MultiColumnTree::TreeCells::Drop(const RowPtr& row) {
    if (!row->mCells) return;
    const RowPtr held = row;  // NOLINT(performance-unnecessary-copy-initialization)
    mRows.erase(std::remove(mRows.begin(), mRows.end(), held), mRows.end());
    const std::unique_ptr<UI_MultiColumnTreeRow::Cells> cells = std::move(held->mCells);
    for (const boost::intrusive_ptr<ui::UI_SubView>& view : cells->views) {
        if (view && view->UI_GetParentNode() != nullptr) mImpl.GetContentView().ChildRemove(view);
    }
}

void UI_MultiColumnTree::TreeCells::DropAll() {
    while (!mRows.empty()) Drop(mRows.back());
}

void UI_MultiColumnTree::TreeCells::Place() {
    // Who is in a cell is told of its size, and may ask for other cells.
    const Rows rows = mRows;
    for (const RowPtr& row : rows) {
        for (int column = 0; row->mCells && column < static_cast<int>(row->mCells->views.size()); ++column) {
            const boost::intrusive_ptr<ui::UI_SubView> view(FindView(*row, column));
            if (view) view->UI_SetLocalRectF(mImpl.GetCellFrame(*row, column));
        }
    }
}

UI_MultiColumnTree::TreeCells::Cell UI_MultiColumnTree::TreeCells::Find(const ui::UI_Node* node) const {
    const ui::UI_Node* const content = &mImpl.GetContentView();
    while (node != nullptr && node->UI_GetParentNode() != content) node = node->UI_GetParentNode();
    for (const RowPtr& row : mRows) {
        for (std::size_t i = 0; node != nullptr && i < row->mCells->views.size(); ++i) {
            if (row->mCells->views[i].get() == node) return {row, static_cast<int>(i)};
        }
    }
    return {nullptr, -1};
}

UI_MultiColumnTree::TreeCells::ControlPtr UI_MultiColumnTree::TreeCells::FindControl(const UI_MultiColumnTreeRow& row,
                                                                                     int column) const {
    ui::UI_SubView* const view = FindView(row, column);
    return view != nullptr ? FindShown(*view, IsUsableControl) : nullptr;
}

UI_MultiColumnTree::TreeCells::ControlPtr UI_MultiColumnTree::TreeCells::FindTabStop(const UI_MultiColumnTreeRow& row,
                                                                                     int column, bool forward) const {
    const int step = forward ? 1 : -1;
    for (int i = column + step; i >= 0 && i < mImpl.GetColumns().GetCount(); i += step) {
        ui::UI_SubView* const view = FindView(row, i);
        UI_ControlView* const control = view != nullptr ? FindShown(*view, IsTabStop) : nullptr;
        if (control != nullptr) return control;
    }
    return nullptr;
}

std::optional<bool> UI_MultiColumnTree::TreeCells::GetCheckState(const UI_MultiColumnTreeRow& row, int column) const {
    const ControlPtr control = FindControl(row, column);
    const UI_Checkbox* const checkbox = dynamic_cast<const UI_Checkbox*>(control.get());
    if (checkbox == nullptr) return std::nullopt;
    return checkbox->IsChecked();
}

void UI_MultiColumnTree::TreeCells::NameControls(const RowPtr& row) {
    for (int column = 0; row->mCells && column < static_cast<int>(row->mCells->views.size()); ++column) {
        const ControlPtr control = FindControl(*row, column);
        if (!control || !SaysNothing(*control)) continue;
        zelcore::ustring name = mImpl.GetTitle(column);
        const zelcore::ustring text = mImpl.GetFirstText(row);
        if (!name.empty() && !text.empty()) name += static_cast<unsigned short>(' ');
        name += text;
        if (!name.empty()) control->UI_SetAccessibleName(name);
    }
}

}  // namespace controls
}  // namespace zelui
