#include "manager/FolderList.h"

#include <algorithm>
#include <cmath>

#include <boost/bind/bind.hpp>
#include <zelui/UI_SubView.h>

namespace zelaudiofilterhostui {

using zelcore::ustring;

namespace {

/// What the column leaves of the list's width until the folders are known.
constexpr float kFreeWidth = 12.0f;
constexpr float kLeastColumnWidth = 10.0f;
constexpr float kEntryMargin = 6.0f;
constexpr float kEntryRest = 1.0f;

}  // namespace

FolderList::FolderList(const boost::intrusive_ptr<Tree>& tree,
                       const boost::intrusive_ptr<zelaudiofilterhost::PluginTechnology>& technology,
                       const zelui::drawbot::SupplierInterface& supplier,
                       const boost::function<void()>& selectionChanged)
    : mTree(tree), mTechnology(technology), mCell(supplier) {
    using namespace boost::placeholders;
    mTree->SetAllowChildren(false);
    mTree->SetIndicateFocus(true);
    mTree->SetSupportNoneSelected(true);
    mTree->SetSupportDeselectAllOnEmptyTreeClick(true);
    mTree->SetSupportMultipleSelections(true);
    mTree->SetSupportNonArrowKeysToSelectRow(false);
    mTree->SetNumberOfColumns(1);
    mTree->SetColumnWidth(0, mTree->GetContentView()->UI_GetLocalRectF(true).width - kFreeWidth);
    if (mTechnology)
        mDirectoriesConnection =
            mTechnology->GetDirectoriesChangedSignal().connect(boost::bind(&FolderList::Refill, this));
    mTree->SetDrawCellOfRowCallback(boost::bind(&FolderList::DrawCell, this, _1, _2, _4, _5));
    mTree->SetCellTextFunction(boost::bind(&FolderList::GetText, this, _1));
    mTree->SetRowsSelectionChangedCallback(selectionChanged);
}

FolderList::~FolderList() {
    mTree->SetDrawCellOfRowCallback(Tree::DrawCellOfRowCallback());
    mTree->SetCellTextFunction(Tree::CellTextFunction());
    mTree->SetRowsSelectionChangedCallback(Tree::SelectionChangedCallback());
}

void FolderList::Refill() {
    mTree->RemoveAllRows();
    mFolders.clear();
    float width = kLeastColumnWidth;
    if (mTechnology) {
        for (auto folder = mTechnology->DirectoryBegin(); folder != mTechnology->DirectoryEnd(); ++folder) {
            mFolders[mTree->CreateAndAppendRow(folder + 1 == mTechnology->DirectoryEnd())] = *folder;
            width = std::max(width, std::trunc(mCell.Measure(*folder)) + kEntryMargin + kEntryRest);
        }
    }
    mTree->SetColumnWidth(0, width);
}

std::vector<ustring> FolderList::GetSelectedFolders() const {
    std::vector<ustring> folders;
    for (const Tree::RowPtr& row : mTree->GetSelectedRows()) {
        const auto found = mFolders.find(row);
        if (found != mFolders.end()) folders.push_back(found->second);
    }
    return folders;
}

ustring FolderList::GetText(const Tree::RowPtr& row) const {
    const auto found = mFolders.find(row);
    return found != mFolders.end() ? found->second : ustring();
}

void FolderList::DrawCell(zelui::drawbot::Drawbot& drawbot, const Tree::RowPtr& row, const zelcore::geom::RectF& cell,
                          bool isHighlighted) const {
    // The column is as wide as its widest entry: nothing is cut off but by the list's own edge.
    mCell.Draw(drawbot, GetText(row), cell, zelui::drawbot::kTruncateNone, isHighlighted);
}

}  // namespace zelaudiofilterhostui
