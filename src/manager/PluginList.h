#pragma once

#include <unordered_map>

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhostui/AudioPluginManagerSettings.h>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_MultiColumnTreeHeaderRow.h>
#include <zelui/UI_TextButton.h>

#include "manager/ListCell.h"
#include "manager/PluginListEntry.h"

namespace zelaudiofilterhostui {

/// The list of all plug-ins: the catalogue's effects, and below them the banned plug-ins. A row's check box and its
/// "Reload" button exist only while the row can be seen. Belongs to a dialog, and may go before the tree does.
class PluginList {
public:
    typedef zelui::controls::UI_MultiColumnTree Tree;
    typedef boost::function<void(const zelaudiofilterhost::PluginLocator&)> ReloadFunction;

    /// The columns' ids in the header.
    enum Column : std::uint32_t { kEnabled = 1, kName = 2, kType = 3, kStatus = 4, kPath = 5 };

    /// Sets the tree up, empty. `reload` is called when a row's "Reload" was pressed. The supplier outlives the list.
    PluginList(const boost::intrusive_ptr<Tree>& tree, const zelui::drawbot::SupplierInterface& supplier,
               const AudioPluginManagerSettings& settings, const ReloadFunction& reload);
    ~PluginList();
    PluginList(const PluginList&) = delete;
    PluginList& operator=(const PluginList&) = delete;

    /// Shows what the catalogue and the user's ban list hold now, as far as it passes `filter`. What is selected stays
    /// so when it is still there.
    void Refill(const zelcore::ustring& filter, bool fitColumns, bool scrollToTop);

    std::uint32_t GetSortColumn() const { return mHeader->GetSortColumn(); }
    bool IsSortAscending() const { return mHeader->IsSortDirectionAscending(); }

private:
    struct Row {
        PluginListEntry entry;
        boost::intrusive_ptr<zelui::controls::UI_Checkbox> enabledBox;
        boost::intrusive_ptr<zelui::controls::UI_TextButton> reloadButton;
    };
    typedef std::unordered_map<const zelui::controls::UI_MultiColumnTreeRow*, Row> RowMap;

    void SetUpTree();
    void SetUpHeader(const AudioPluginManagerSettings& settings);
    void AddRows(const zelcore::ustring& filter);
    void AddRow(const PluginListEntry& entry);
    void Select(const zelaudiofilterhost::PluginLocator& locator);
    void FitColumns();
    float GetBestFitWidth(int index) const;
    const Row* Find(const Tree::RowPtr& row) const;
    zelcore::ustring GetText(const PluginListEntry& entry, std::uint32_t column) const;

    // The tree's callbacks
    void DrawCell(zelui::drawbot::Drawbot& drawbot, const Tree::RowPtr& row, int index,
                  const zelcore::geom::RectF& cell, bool isHighlighted) const;
    zelcore::ustring GetSortKey(const Tree::RowPtr& row, int index) const;
    zelcore::ustring GetAccessibleText(const Tree::RowPtr& row, int index) const;
    void OnRowVisibilityChanged(const Tree::RowPtr& row);
    void OnCellSelectionChanged();
    void OnColumnWidthChanged(std::uint32_t column);

    static bool NeedsReloadButton(const PluginListEntry& entry);
    void AddEnabledBox(const Tree::RowPtr& treeRow, Row& row);
    void AddReloadButton(const Tree::RowPtr& treeRow, Row& row);
    void PlaceReloadButton(zelui::controls::UI_TextButton& button) const;
    static void Release(Row& row);
    void OnEnabledBoxChanged(const zelui::controls::UI_MultiColumnTreeRow* treeRow);
    void OnReloadPressed(const zelui::controls::UI_MultiColumnTreeRow* treeRow);

    const boost::intrusive_ptr<Tree> mTree;
    boost::intrusive_ptr<zelui::controls::UI_MultiColumnTreeHeaderRow> mHeader;
    const zelui::drawbot::SupplierInterface& mSupplier;
    const ListCell mCell;
    const ReloadFunction mReload;
    RowMap mRows;
};

}  // namespace zelaudiofilterhostui
