#include "manager/PluginList.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include <boost/bind/bind.hpp>
#include <boost/make_shared.hpp>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

namespace zelaudiofilterhostui {

using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhost::PluginModuleInfo;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::ustring;
using zelcore::config::Localize;
using zelcore::utility::AsciiToUTF16;
using zelui::controls::UI_Checkbox;
using zelui::controls::UI_MultiColumnTreeHeaderRow;
using zelui::controls::UI_MultiColumnTreeRow;
using zelui::controls::UI_TextButton;

namespace {

struct ColumnLook {
    PluginList::Column id;
    const char* title;
    float width;
};

constexpr ColumnLook kColumns[] = {
    {PluginList::kEnabled, "$$$/tsu/Enabled=Enabled", 70.0f},
    {PluginList::kName, "$$$/tsu/PluginManager/PluginName=Name", 140.0f},
    {PluginList::kType, "$$$/tsu/PluginManager/PluginType=Type", 70.0f},
    {PluginList::kStatus, "$$$/tsu/PluginManager/PluginStatus=Status", 70.0f},
    {PluginList::kPath, "$$$/tsu/PluginManager/PluginPath=Path", 240.0f},
};
constexpr int kEnabledIndex = 0;
constexpr int kTypeIndex = 2;
constexpr int kStatusIndex = 3;

constexpr float kBoxWidth = 200.0f;
constexpr float kBoxHeight = 14.0f;
constexpr float kButtonHeight = 17.0f;
/// What is free to the right of a "Reload" button.
constexpr float kButtonMargin = 4.0f;

bool AlwaysShowsReload() {
    return zelcore::debug::DebugDatabase::Instance().GetBool("AlwaysShowPlugInRescanButton", false);
}

zelcore::geom::PointF GetButtonSize(const zelui::drawbot::SupplierInterface& supplier) {
    const float width =
        UI_TextButton::UI_GetRecommendedSize(&supplier, Localize("$$$/AudioPluginManager/Reload=Reload"),
                                             UI_TextButton::DefaultTextSize())
            .x;
    return {width, kButtonHeight};
}

}  // namespace

PluginList::PluginList(const boost::intrusive_ptr<Tree>& tree, const zelui::drawbot::SupplierInterface& supplier,
                       const AudioPluginManagerSettings& settings, const ReloadFunction& reload)
    : mTree(tree), mSupplier(supplier), mCell(supplier), mReload(reload) {
    SetUpTree();
    SetUpHeader(settings);
    mTree->SortTree();
}

// The tree and the controls may be held by others, and must not call a list that is gone.
PluginList::~PluginList() {
    mTree->SetDrawCellOfRowCallback(Tree::DrawCellOfRowCallback());
    mTree->SetRowVisibilityChangedCallback(Tree::RowVisibilityChangedCallback());
    mTree->SetCellSelectionChangedCallback(Tree::SelectionChangedCallback());
    mTree->SetCellSortDataFunction(Tree::CellSortDataFunction());
    mTree->SetCellTextFunction(Tree::CellTextFunction());
    mHeader->SetColumnBestFitWidthCallback(UI_MultiColumnTreeHeaderRow::ColumnBestFitWidthCallback());
    mHeader->SetColumnWidthChangedCallback(UI_MultiColumnTreeHeaderRow::ColumnWidthChangedCallback());
    for (auto& [row, data] : mRows) Release(data);
}

void PluginList::SetUpTree() {
    using namespace boost::placeholders;
    mTree->SetAllowChildren(false);
    mTree->SetIndicateFocus(false);
    mTree->SetSupportNoneSelected(true);
    mTree->SetSupportDeselectAllOnEmptyTreeClick(true);
    mTree->SetSupportMultipleSelections(false);
    mTree->SetSupportNonArrowKeysToSelectRow(false);
    mTree->SetSupportUserSelectableRows(true);
    mTree->SetSupportUserSelectableCells(true);
    mTree->SetDrawCellOfRowCallback(boost::bind(&PluginList::DrawCell, this, _1, _2, _3, _4, _5));
    mTree->SetRowVisibilityChangedCallback(boost::bind(&PluginList::OnRowVisibilityChanged, this, _1));
    mTree->SetCellSelectionChangedCallback(boost::bind(&PluginList::OnCellSelectionChanged, this));
    mTree->SetCellSortDataFunction(boost::bind(&PluginList::GetSortKey, this, _1, _2));
    mTree->SetCellTextFunction(boost::bind(&PluginList::GetAccessibleText, this, _1, _2));
}

void PluginList::SetUpHeader(const AudioPluginManagerSettings& settings) {
    mHeader = new UI_MultiColumnTreeHeaderRow(*mTree);
    for (const ColumnLook& column : kColumns) mHeader->AppendColumn(Localize(column.title), column.id);
    for (const ColumnLook& column : kColumns) mHeader->SetColumnWidth(column.id, column.width);
    mHeader->SetColumnBestFitWidthCallback(boost::bind(&PluginList::GetBestFitWidth, this, boost::placeholders::_1));
    mHeader->SetColumnWidthChangedCallback(
        boost::bind(&PluginList::OnColumnWidthChanged, this, boost::placeholders::_1));
    if (settings.sortColumn == 0) return;
    mHeader->SetSortColumn(settings.sortColumn);
    mHeader->SetSortDirection(settings.sortAscending);
}

// Rows

void PluginList::Refill(const ustring& filter, bool fitColumns, bool scrollToTop) {
    const Tree::Rows selectedRows = mTree->GetSelectedRows();
    const Row* const selected = selectedRows.empty() ? nullptr : Find(selectedRows.front());
    const std::optional<PluginLocator> selectedLocator =
        selected != nullptr ? std::optional<PluginLocator>(selected->entry.GetLocator()) : std::nullopt;
    mTree->RemoveAllRows();
    mRows.clear();
    AddRows(filter);
    if (fitColumns) FitColumns();
    mTree->SortTree();
    if (selectedLocator) Select(*selectedLocator);
    if (scrollToTop) mTree->ScrollToTop();
}

void PluginList::AddRows(const ustring& filter) {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info) {
        if (!(*info)->HasAnyNonSynthEffect()) continue;
        const PluginListEntry entry(*info);
        if (entry.Passes(filter)) AddRow(entry);
    }
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    for (auto banned = bans.BannedBegin(); banned != bans.BannedEnd(); ++banned) {
        const PluginListEntry entry(*banned);
        if (entry.Passes(filter)) AddRow(entry);
    }
}

void PluginList::AddRow(const PluginListEntry& entry) {
    const Tree::RowPtr row(new UI_MultiColumnTreeRow);
    mRows.emplace(row.get(), Row{entry, nullptr, nullptr});
    mTree->AppendRow(row, false);
}

void PluginList::Select(const PluginLocator& locator) {
    for (std::size_t place = 0; place < mTree->GetRowCount(); ++place) {
        const Tree::RowPtr row = mTree->GetRowAt(place);
        if (Find(row)->entry.GetLocator() == locator) return mTree->SelectRow(row);
    }
}

void PluginList::FitColumns() {
    for (const Column column : {kName, kStatus, kPath}) {
        const int index = mHeader->GetIndexOf(column);
        mHeader->SetColumnWidth(column, std::max(kColumns[index].width, GetBestFitWidth(index)));
    }
}

float PluginList::GetBestFitWidth(int index) const {
    const std::uint32_t column = mHeader->GetColumnAt(index);
    // A check box needs no more room than it has.
    if (index == kEnabledIndex) return kColumns[kEnabledIndex].width;
    const float buttonWidth = GetButtonSize(mSupplier).x + 2.0f * kButtonMargin;
    const ustring title = index >= 0 && index < int(std::size(kColumns)) ? Localize(kColumns[index].title) : ustring();
    float width = mCell.Measure(title);
    for (const auto& [treeRow, row] : mRows) {
        float cell = mCell.Measure(GetText(row.entry, column));
        if (column == kStatus && NeedsReloadButton(row.entry)) cell += buttonWidth;
        width = std::max(width, cell);
    }
    return std::ceil(width + 2.0f * ListCell::kTextInset);
}

const PluginList::Row* PluginList::Find(const Tree::RowPtr& row) const {
    const auto found = mRows.find(row.get());
    return found != mRows.end() ? &found->second : nullptr;
}

ustring PluginList::GetText(const PluginListEntry& entry, std::uint32_t column) const {
    switch (column) {
        case kName:
            return entry.GetName();
        case kType:
            return entry.GetType();
        case kStatus:
            return entry.GetStatus();
        case kPath:
            return entry.GetPath();
        default:
            return ustring();
    }
}

// The tree's callbacks

void PluginList::DrawCell(zelui::drawbot::Drawbot& drawbot, const Tree::RowPtr& treeRow, int index,
                          const zelcore::geom::RectF& cell, bool isHighlighted) const {
    const Row* const row = Find(treeRow);
    if (index == kEnabledIndex || row == nullptr) return;
    zelcore::geom::RectF room = cell;
    if (index == kStatusIndex && row->reloadButton)
        room.width = std::max(0.0f, row->reloadButton->UI_GetLocalRectF().left);
    // Not the same for all columns, on purpose.
    const auto truncation = index == kTypeIndex ? zelui::drawbot::kTruncateMiddle : zelui::drawbot::kTruncateEnd;
    mCell.Draw(drawbot, GetText(row->entry, mHeader->GetColumnAt(index)), room, truncation, isHighlighted);
}

ustring PluginList::GetSortKey(const Tree::RowPtr& treeRow, int index) const {
    const Row* const row = Find(treeRow);
    if (row == nullptr) return ustring();
    if (index == kEnabledIndex) return AsciiToUTF16(row->entry.IsEnabled() ? "2" : "1");
    return GetText(row->entry, mHeader->GetColumnAt(index));
}

// Says in words what others see, and why a plug-in does not work, where that is known.
ustring PluginList::GetAccessibleText(const Tree::RowPtr& treeRow, int index) const {
    const Row* const row = Find(treeRow);
    if (row == nullptr) return ustring();
    if (index == kEnabledIndex)
        return row->entry.IsEnabled() ? Localize("$$$/AudioPluginManager/IsEnabled=Enabled")
                                      : Localize("$$$/AudioPluginManager/IsDisabled=Disabled");
    const ustring text = GetText(row->entry, mHeader->GetColumnAt(index));
    if (index != kStatusIndex || row->entry.GetInfo() != nullptr) return text;
    const ustring reason = BannedPluginManager::GetInstance().GetReason(row->entry.GetLocator());
    if (reason.empty()) return text;
    return zelcore::utility::FillPlaceholders(Localize("$$$/AudioPluginManager/FailedBecause=@0: @1"), {text, reason});
}

void PluginList::OnRowVisibilityChanged(const Tree::RowPtr& treeRow) {
    const auto found = mRows.find(treeRow.get());
    if (found == mRows.end()) return;
    Row& row = found->second;
    if (!mTree->IsRowVisible(treeRow)) return Release(row);
    if (!row.enabledBox) AddEnabledBox(treeRow, row);
    if (!row.reloadButton && NeedsReloadButton(row.entry)) AddReloadButton(treeRow, row);
}

// A click on a control in a cell does not take the keyboard focus; it belongs to the list then.
void PluginList::OnCellSelectionChanged() {
    const int index = mTree->GetSelectedCellOfSelectedRow();
    const Tree::Rows selected = mTree->GetSelectedRows();
    if (index < 0 || selected.empty()) return;
    const boost::intrusive_ptr<zelui::ui::UI_SubView> cell = selected.front()->GetCellView(index);
    if (!cell || cell->ChildCount() == 0) return;
    if (mTree->UI_GetKeyboardFocusLeafNode() != nullptr && !mTree->UI_HasKeyboardFocus(true))
        mTree->UI_GainKeyboardFocus(zelui::ui::kFocusByMouse);
}

// Controls in rows

bool PluginList::NeedsReloadButton(const PluginListEntry& entry) {
    return entry.GetInfo() == nullptr || AlwaysShowsReload();
}

void PluginList::AddEnabledBox(const Tree::RowPtr& treeRow, Row& row) {
    row.enabledBox = new UI_Checkbox;
    const float top = std::ceil((mTree->GetRowHeight() - kBoxHeight) * 0.5f);
    row.enabledBox->UI_SetLocalRectF({0.0f, top, kBoxWidth, kBoxHeight});
    row.enabledBox->SetWantsKeyboardFocus(false);
    row.enabledBox->UI_SetAccessibleName(zelcore::utility::FillPlaceholders(
        Localize("$$$/AudioPluginManager/EnableName=Enable @0"), {row.entry.GetName()}));
    row.enabledBox->UI_SetDisabled(row.entry.GetInfo() == nullptr);
    row.enabledBox->SetChecked(row.entry.IsEnabled());
    row.enabledBox->NotifyWhenChanged(boost::make_shared<UI_Checkbox::ButtonChangedFunction>(
        boost::bind(&PluginList::OnEnabledBoxChanged, this, treeRow.get())));
    treeRow->GetCellView(kEnabledIndex)->ChildPushBack(row.enabledBox);
    row.enabledBox->UI_Show(true);
}

void PluginList::AddReloadButton(const Tree::RowPtr& treeRow, Row& row) {
    row.reloadButton = new UI_TextButton;
    row.reloadButton->SetText(Localize("$$$/AudioPluginManager/Reload=Reload"));
    row.reloadButton->SetWantsKeyboardFocus(false);
    row.reloadButton->UI_SetAccessibleName(zelcore::utility::FillPlaceholders(
        Localize("$$$/AudioPluginManager/ReloadName=Reload @0"), {row.entry.GetName()}));
    PlaceReloadButton(*row.reloadButton);
    row.reloadButton->NotifyWhenChanged(boost::make_shared<UI_TextButton::ButtonChangedFunction>(
        boost::bind(&PluginList::OnReloadPressed, this, treeRow.get())));
    treeRow->GetCellView(kStatusIndex)->ChildPushBack(row.reloadButton);
    row.reloadButton->UI_Show(true);
}

void PluginList::PlaceReloadButton(UI_TextButton& button) const {
    const zelcore::geom::PointF size = GetButtonSize(mSupplier);
    const float left = std::max(0.0f, mHeader->GetColumnWidth(kStatus) - size.x - kButtonMargin);
    button.UI_SetLocalRectF({left, (mTree->GetRowHeight() - size.y) * 0.5f, size.x, size.y});
}

void PluginList::OnColumnWidthChanged(std::uint32_t column) {
    if (column != kStatus) return;
    for (const auto& [treeRow, row] : mRows) {
        if (row.reloadButton) PlaceReloadButton(*row.reloadButton);
    }
}

void PluginList::Release(Row& row) {
    const boost::shared_ptr<zelui::controls::UI_Button::ButtonChangedFunction> none;
    if (row.enabledBox) row.enabledBox->NotifyWhenChanged(none);
    if (row.reloadButton) row.reloadButton->NotifyWhenChanged(none);
    row.enabledBox.reset();
    row.reloadButton.reset();
}

void PluginList::OnEnabledBoxChanged(const UI_MultiColumnTreeRow* treeRow) {
    const auto found = mRows.find(treeRow);
    if (found == mRows.end()) return;
    PluginModuleInfo* const info = found->second.entry.GetInfo();
    if (info != nullptr) info->SetEnabled(found->second.enabledBox->IsChecked());
}

void PluginList::OnReloadPressed(const UI_MultiColumnTreeRow* treeRow) {
    const auto found = mRows.find(treeRow);
    if (found == mRows.end()) return;
    // The row, and with it the button that is calling, goes when the list is filled again.
    const PluginLocator locator = found->second.entry.GetLocator();
    const ReloadFunction reload = mReload;
    reload(locator);
}

}  // namespace zelaudiofilterhostui
