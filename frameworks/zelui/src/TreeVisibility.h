#pragma once

#include <cstddef>

#include <zelui/UI_MultiColumnTree.h>

namespace zelui {
namespace controls {

/// Which rows of a tree can be seen, as far as it was told.
class UI_MultiColumnTree::TreeVisibility {
public:
    explicit TreeVisibility(Impl& impl);

    /// Tells of all that has changed. Does nothing while it is telling: what changes meanwhile is told before that
    /// ends.
    void Sync();
    /// Tells of each visible row that it is none any more.
    void LeaveAll();

private:
    /// Places from `first` up to the one before `end`.
    struct Range {
        std::size_t first;
        std::size_t end;
    };

    Range GetRange() const;
    bool IsIn(const Range& range, const RowPtr& row) const;
    /// False when there is nothing to tell.
    bool TellNext();
    void Enter(const RowPtr& row);
    void Leave(const RowPtr& row);
    void Tell(const RowPtr& row);

    Impl& mImpl;
    Rows mVisible;
    bool mIsTelling = false;
};

}  // namespace controls
}  // namespace zelui
