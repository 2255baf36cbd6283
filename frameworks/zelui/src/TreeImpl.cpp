#include "TreeImpl.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QFontMetrics>
#include <QStyle>

#include "CallOut.h"
#include "ControlText.h"
#include "NodePeer.h"
#include "TreeContentView.h"
#include "TreeSort.h"

namespace zelui {
namespace controls {

namespace {

// Room for a button of 17 units with air round it, and for the letters of every script.
constexpr int kLowestRow = 20;
constexpr int kAirRoundText = 4;
constexpr int kHeaderHeight = 22;
// No cell of a row that can be seen is farther away; a frame beyond the limits of nodes would not be taken.
constexpr int kFarthest = 1000000;

}  // namespace

UI_MultiColumnTree::Impl::Calling::Calling(Impl& impl) : mTree(impl.Hold()), mImpl(impl) { ++mImpl.mCalls; }

UI_MultiColumnTree::Impl::Calling::~Calling() {
    if (--mImpl.mCalls == 0 && mImpl.mIsDirty) mImpl.Wake();
}

UI_MultiColumnTree::Impl::Impl(UI_MultiColumnTree& tree)
    : mTree(tree),
      mContentView(new TreeContentView),
      mCells(*this),
      mSelection(*this),
      mVisibility(*this),
      mKeys(*this),
      mWake([this] { OnWake(); }) {
    mContentView->UI_Show(true);
}

UI_MultiColumnTree::Impl::~Impl() {
    for (const RowPtr& row : mRows) {
        row->mTree = nullptr;
        row->mIsSelected = row->mIsVisible = false;
    }
}

boost::intrusive_ptr<UI_MultiColumnTree> UI_MultiColumnTree::Impl::Hold() const {
    return mTree.GetRefCount() > 0 ? &mTree : nullptr;
}

// Rows

UI_MultiColumnTree::RowPtr UI_MultiColumnTree::Impl::GetRow(int place) const {
    return place >= 0 && static_cast<std::size_t>(place) < mRows.size() ? mRows[static_cast<std::size_t>(place)]
                                                                        : RowPtr();
}

bool UI_MultiColumnTree::Impl::Contains(const RowPtr& row) const { return row && row->mTree == &mTree; }

void UI_MultiColumnTree::Impl::Append(const RowPtr& row) {
    if (!row) throw std::invalid_argument("UI_MultiColumnTree::AppendRow: no row was given");
    if (row->mTree != nullptr) throw std::invalid_argument("UI_MultiColumnTree::AppendRow: the row is in a tree");
    row->mPlace = mRows.size();
    mRows.push_back(row);
    row->mTree = &mTree;
    ++mGeneration;
    Changed();
}

void UI_MultiColumnTree::Impl::RemoveAll() {
    const boost::intrusive_ptr<UI_MultiColumnTree> held = Hold();
    mVisibility.LeaveAll();
    mCells.DropAll();
    const Rows removed = std::move(mRows);
    mRows.clear();
    ++mGeneration;
    for (const RowPtr& row : removed) {
        row->mTree = nullptr;
        row->mPlace = 0;
        row->mIsSelected = false;
    }
    Changed();
    mSelection.OnRowsRemoved();
}

void UI_MultiColumnTree::Impl::Sort() {
    const int column = mColumns.GetSortIndex();
    if (column < 0) return;
    const boost::intrusive_ptr<UI_MultiColumnTree> held = Hold();
    const bool useText = mCallbacks.sortData.empty();
    const CellSortDataFunction function = useText ? mCallbacks.text : mCallbacks.sortData;
    if (function.empty()) return;
    const bool ascending = mColumns.GetHeader()->IsSortDirectionAscending();
    const Rows rows = mRows;
    const unsigned generation = mGeneration;
    std::vector<zelcore::ustring> keys;
    keys.reserve(rows.size());
    for (const RowPtr& row : rows) {
        keys.push_back(function(row, column));
        // The function itself has put other rows there, which nobody asked to sort.
        if (mGeneration != generation) return;
    }
    const std::vector<std::size_t> order = GetSortedOrder(std::move(keys), ascending);
    for (std::size_t place = 0; place < order.size(); ++place) {
        mRows[place] = rows[order[place]];
        mRows[place]->mPlace = place;
    }
    ++mGeneration;
    Changed();
}

void UI_MultiColumnTree::Impl::SortByUser(int column) {
    UI_MultiColumnTreeHeaderRow* const header = mColumns.GetHeader();
    if (header == nullptr || column < 0 || column >= mColumns.GetCount()) return;
    const UI_MultiColumnTreeHeaderRow::ColumnID id = header->GetColumnAt(column);
    header->SetSortDirection(id != header->GetSortColumn() || !header->IsSortDirectionAscending());
    header->SetSortColumn(id);
    CallOut("Sorting a list", [this] { Sort(); });
}

zelcore::ustring UI_MultiColumnTree::Impl::GetTitle(int column) const {
    const UI_MultiColumnTreeHeaderRow* const header = mColumns.GetHeader();
    const bool exists = header != nullptr && column >= 0 && column < mColumns.GetCount();
    return exists ? header->mColumns[static_cast<std::size_t>(column)].title : zelcore::ustring();
}

zelcore::ustring UI_MultiColumnTree::Impl::GetText(const RowPtr& row, int column) {
    zelcore::ustring text;
    const CellTextFunction function = mCallbacks.text;
    if (!row || function.empty()) return text;
    const Calling calling(*this);
    CallOut("The texts of a list", [&] { text = function(row, column); });
    return text;
}

zelcore::ustring UI_MultiColumnTree::Impl::GetFirstText(const RowPtr& row) {
    zelcore::ustring text;
    for (int column = 0; text.empty() && column < mColumns.GetCount(); ++column) text = GetText(row, column);
    return text;
}

// Where they stand

int UI_MultiColumnTree::Impl::GetRowHeight() const {
    if (QApplication::instance() == nullptr) return kLowestRow;
    return std::max(kLowestRow, QFontMetrics(GetControlFont()).height() + kAirRoundText);
}

int UI_MultiColumnTree::Impl::GetHeaderHeight() const {
    if (mColumns.GetHeader() == nullptr) return 0;
    return std::max(kHeaderHeight, GetRowHeight());
}

zelcore::geom::RectF UI_MultiColumnTree::Impl::GetCellFrame(const UI_MultiColumnTreeRow& row, int column) const {
    const int rowHeight = GetRowHeight();
    const std::int64_t top = static_cast<std::int64_t>(row.mPlace) * rowHeight - mScrollY;
    const int left = mColumns.GetLeft(column) - mScrollX;
    return {static_cast<float>(std::clamp(left, -kFarthest, kFarthest)),
            static_cast<float>(std::clamp<std::int64_t>(top, -kFarthest, kFarthest)),
            static_cast<float>(mColumns.GetWidth(column)), static_cast<float>(rowHeight)};
}

void UI_MultiColumnTree::Impl::ScrollTo(int x, int y) {
    Flush();
    const zelcore::geom::RectF content = mContentView->UI_GetLocalRectF();
    const std::int64_t height = static_cast<std::int64_t>(mRows.size()) * GetRowHeight();
    const std::int64_t lowest = std::max<std::int64_t>(0, height - static_cast<int>(content.height));
    const int rightmost = std::max(0, mColumns.GetLeft(mColumns.GetCount()) - static_cast<int>(content.width));
    OnScrolled(std::clamp(x, 0, rightmost), static_cast<int>(std::clamp<std::int64_t>(y, 0, lowest)));
    mIsDirty = true;
    Flush();
}

void UI_MultiColumnTree::Impl::ScrollToRow(const UI_MultiColumnTreeRow& row) {
    Flush();
    const int rowHeight = GetRowHeight();
    const int top = static_cast<int>(row.mPlace) * rowHeight;
    const int height = static_cast<int>(mContentView->UI_GetLocalRectF().height);
    // Of a row that does not fit the upper part.
    const int y = std::min(std::max(mScrollY, top + rowHeight - height), top);
    if (y != mScrollY) ScrollTo(mScrollX, y);
}

void UI_MultiColumnTree::Impl::OnScrolled(int x, int y) {
    if (x == mScrollX && y == mScrollY) return;
    mScrollX = x;
    mScrollY = y;
    CallOut("Scrolling a list", [this] { mCells.Place(); });
    Wake();
}

void UI_MultiColumnTree::Impl::OnViewChanged() {
    PlaceContentView();
    Wake();
}

QWidget* UI_MultiColumnTree::Impl::GetWidget() const {
    const Peer* const peer = mTree.UI_GetPeer();
    return peer != nullptr ? peer->GetWidget() : nullptr;
}

bool UI_MultiColumnTree::Impl::CanBeSeen() const { return GetWidget() != nullptr && GetWidget()->isVisible(); }

// Bringing up to date

void UI_MultiColumnTree::Impl::Changed() {
    if (mIsDirty) return;
    mIsDirty = true;
    if (mCalls == 0) Wake();
}

void UI_MultiColumnTree::Impl::Flush() {
    if (!mIsDirty || mCalls > 0) return;
    mIsDirty = false;
    const boost::intrusive_ptr<UI_MultiColumnTree> held = Hold();
    PlaceContentView();
    mTree.UI_SyncPeer();
    CallOut("Laying out a list", [this] { mCells.Place(); });
}

void UI_MultiColumnTree::Impl::Wake() { mWake.Schedule(); }

void UI_MultiColumnTree::Impl::OnWake() {
    if (mCalls > 0) {
        mIsDirty = true;
        return;
    }
    const boost::intrusive_ptr<UI_MultiColumnTree> held = Hold();
    if (!held) return;
    Flush();
    mVisibility.Sync();
}

// The widget knows of its scroll bars; as long as nobody sees it, it has not been laid out.
void UI_MultiColumnTree::Impl::PlaceContentView() {
    if (CanBeSeen()) {
        const QWidget& viewport = *static_cast<QAbstractScrollArea*>(GetWidget())->viewport();
        mContentView->UI_SetLocalRectF({static_cast<float>(viewport.x()), static_cast<float>(viewport.y()),
                                        static_cast<float>(viewport.width()), static_cast<float>(viewport.height())});
        return;
    }
    const zelcore::geom::RectF frame = mTree.UI_GetLocalRectF();
    const float edge = QApplication::instance() != nullptr
                           ? static_cast<float>(QApplication::style()->pixelMetric(QStyle::PM_DefaultFrameWidth))
                           : 1.0f;
    const float top = edge + static_cast<float>(GetHeaderHeight());
    mContentView->UI_SetLocalRectF(
        {edge, top, std::max(0.0f, frame.width - 2 * edge), std::max(0.0f, frame.height - top - edge)});
}

}  // namespace controls
}  // namespace zelui
