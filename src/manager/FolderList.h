#pragma once

#include <map>
#include <vector>

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/PluginTechnology.h>
#include <zelcore/Signals.h>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_MultiColumnTree.h>

#include "manager/ListCell.h"

namespace zelaudiofilterhostui {

/// The list of a technology's plug-in folders: follows their changes, and knows which of them are selected. Belongs to
/// a dialog, and may go before the tree does.
class FolderList {
public:
    typedef zelui::controls::UI_MultiColumnTree Tree;

    /// Sets the tree up, empty. `selectionChanged` is called after the selection changed. The supplier outlives the
    /// list.
    FolderList(const boost::intrusive_ptr<Tree>& tree,
               const boost::intrusive_ptr<zelaudiofilterhost::PluginTechnology>& technology,
               const zelui::drawbot::SupplierInterface& supplier, const boost::function<void()>& selectionChanged);
    ~FolderList();
    FolderList(const FolderList&) = delete;
    FolderList& operator=(const FolderList&) = delete;

    /// Shows the technology's folders as they are now.
    void Refill();
    bool IsAnySelected() const { return mTree->IsAnyRowSelected(); }
    std::vector<zelcore::ustring> GetSelectedFolders() const;

private:
    zelcore::ustring GetText(const Tree::RowPtr& row) const;
    void DrawCell(zelui::drawbot::Drawbot& drawbot, const Tree::RowPtr& row, const zelcore::geom::RectF& cell,
                  bool isHighlighted) const;

    const boost::intrusive_ptr<Tree> mTree;
    const boost::intrusive_ptr<zelaudiofilterhost::PluginTechnology> mTechnology;
    const ListCell mCell;
    std::map<Tree::RowPtr, zelcore::ustring> mFolders;
    boost::signals::scoped_connection mDirectoriesConnection;
};

}  // namespace zelaudiofilterhostui
