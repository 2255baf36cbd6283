#include "TreeVisibility.h"

#include <algorithm>

#include <QScopedValueRollback>

#include "CallOut.h"
#include "NodeHost.h"
#include "TreeImpl.h"

namespace zelui {
namespace controls {

namespace {

// More rows than fit on any screen. Beyond it somebody changes the rows whenever one is told of; the main loop goes on
// meanwhile.
constexpr int kMostAtOnce = 2000;

}  // namespace

UI_MultiColumnTree::TreeVisibility::TreeVisibility(Impl& impl) : mImpl(impl) {}

UI_MultiColumnTree::TreeVisibility::Range UI_MultiColumnTree::TreeVisibility::GetRange() const {
    const int height = static_cast<int>(mImpl.GetContentView().UI_GetLocalRectF().height);
    if (height <= 0 || !mImpl.CanBeSeen()) return {0, 0};
    const std::size_t rowHeight = static_cast<std::size_t>(mImpl.GetRowHeight());
    const std::size_t top = static_cast<std::size_t>(std::max(0, mImpl.GetScrollY()));
    const std::size_t bottom = top + static_cast<std::size_t>(height);
    const std::size_t count = mImpl.GetRows().size();
    return {std::min(top / rowHeight, count), std::min((bottom + rowHeight - 1) / rowHeight, count)};
}

bool UI_MultiColumnTree::TreeVisibility::IsIn(const Range& range, const RowPtr& row) const {
    return row->mTree == &mImpl.GetTree() && row->mPlace >= range.first && row->mPlace < range.end;
}

void UI_MultiColumnTree::TreeVisibility::Sync() {
    if (mIsTelling) return;
    const boost::intrusive_ptr<UI_MultiColumnTree> held = mImpl.Hold();
    {
        const QScopedValueRollback<bool> telling(mIsTelling, true);
        int told = 0;
        while (told < kMostAtOnce && TellNext()) ++told;
        if (told == kMostAtOnce) mImpl.Wake();
    }
    // At once: a row must not be painted without its controls first.
    NodeHost* const host = NodeHost::Of(mImpl.GetTree());
    if (host != nullptr) CallOut("Showing the controls of a list", [host] { host->Update(); });
}

// One at a time, as whoever is told may change what there is to tell.
bool UI_MultiColumnTree::TreeVisibility::TellNext() {
    mImpl.Flush();
    const Range range = GetRange();
    const auto leaving =
        std::find_if(mVisible.begin(), mVisible.end(), [&](const RowPtr& row) { return !IsIn(range, row); });
    if (leaving != mVisible.end()) {
        Leave(*leaving);
        return true;
    }
    const Rows& rows = mImpl.GetRows();
    for (std::size_t place = range.first; place < range.end; ++place) {
        if (rows[place]->mIsVisible) continue;
        Enter(rows[place]);
        return true;
    }
    return false;
}

void UI_MultiColumnTree::TreeVisibility::LeaveAll() {
    const QScopedValueRollback<bool> telling(mIsTelling, true);
    while (!mVisible.empty()) Leave(mVisible.back());
}

void UI_MultiColumnTree::TreeVisibility::Enter(const RowPtr& row) {
    const RowPtr entered = row;  // NOLINT(performance-unnecessary-copy-initialization)
    entered->mIsVisible = true;
    mVisible.push_back(entered);
    Tell(entered);
    if (entered->mIsVisible) mImpl.GetCells().NameControls(entered);
}

void UI_MultiColumnTree::TreeVisibility::Leave(const RowPtr& row) {
    const RowPtr left = row;  // NOLINT(performance-unnecessary-copy-initialization)
    left->mIsVisible = false;
    mVisible.erase(std::find(mVisible.begin(), mVisible.end(), left));
    Tell(left);
    if (!left->mIsVisible) mImpl.GetCells().Drop(left);
}

void UI_MultiColumnTree::TreeVisibility::Tell(const RowPtr& row) {
    // It may be replaced while it runs.
    const RowVisibilityChangedCallback callback = mImpl.GetCallbacks().visibility;
    if (!callback.empty()) CallOut("A list's visibility handler", [&] { callback(row); });
}

}  // namespace controls
}  // namespace zelui
