#include "TreePeer.h"

#include <QKeyEvent>
#include <QPainter>

#include "CallOut.h"
#include "ControlText.h"
#include "KeyboardMapping.h"
#include "QtDrawbot.h"

namespace zelui {
namespace controls {

UI_MultiColumnTree::TreePeer::TreePeer(UI_MultiColumnTree& tree, Impl& impl) : ControlPeer(tree), mImpl(impl) {}

UI_MultiColumnTree::TreePeer::~TreePeer() {
    if (mIsForgotten) return;
    Forget();
    mImpl.Wake();
}

void UI_MultiColumnTree::TreePeer::Forget() {
    mIsForgotten = true;
    if (GetTreeWidget() != nullptr) GetTreeWidget()->LetGoOfClient();
}

QWidget* UI_MultiColumnTree::TreePeer::MakeControl(QWidget& parent) { return new TreeWidget(parent, *this); }

void UI_MultiColumnTree::TreePeer::OnSync() {
    ControlPeer::OnSync();
    TreeColumns& columns = mImpl.GetColumns();
    const UI_MultiColumnTreeHeaderRow* const header = columns.GetHeader();
    const RowPtr& current = mImpl.GetSelection().GetCurrent();
    TreeWidget::Look look;
    for (int i = 0; i < columns.GetCount(); ++i) look.widths.push_back(columns.GetWidth(i));
    look.rowHeight = mImpl.GetRowHeight();
    look.headerHeight = mImpl.GetHeaderHeight();
    look.sortColumn = columns.GetSortIndex();
    look.ascending = header == nullptr || header->IsSortDirectionAscending();
    look.indicateFocus = mImpl.GetAbilities().indicateFocus;
    look.scrollX = mImpl.GetScrollX();
    look.scrollY = mImpl.GetScrollY();
    look.currentPlace = current ? static_cast<int>(current->mPlace) : -1;
    look.currentCell = mImpl.GetSelection().GetCell();
    look.selectionMode = GetSelectionMode();
    look.selectionGeneration = mImpl.GetSelection().GetGeneration();
    look.rowsGeneration = mImpl.GetGeneration();
    // While texts are being asked for or drawn Qt is in the middle of it.
    const Impl::Calling calling(mImpl);
    GetTreeWidget()->Show(look);
}

QAbstractItemView::SelectionMode UI_MultiColumnTree::TreePeer::GetSelectionMode() const {
    if (!mImpl.GetAbilities().rows) return QAbstractItemView::NoSelection;
    return mImpl.GetAbilities().multiple ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection;
}

// Those of the list itself: what leads out of it, or is a shortcut, is not among them.
bool UI_MultiColumnTree::TreePeer::UsesKey(const QKeyEvent& key) const {
    switch (key.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_Space:
            return IsPlain(key);
        default:
            return mImpl.GetAbilities().typeAhead && IsPlain(key) && !key.text().isEmpty() && key.text()[0].isPrint();
    }
}

// What is shown

int UI_MultiColumnTree::TreePeer::GetRowCount() const { return static_cast<int>(mImpl.GetRows().size()); }

int UI_MultiColumnTree::TreePeer::GetColumnCount() const { return mImpl.GetColumns().GetCount(); }

QString UI_MultiColumnTree::TreePeer::GetTitle(int column) const { return ToControlText(mImpl.GetTitle(column)); }

QString UI_MultiColumnTree::TreePeer::GetText(int place, int column) const {
    return ToControlText(mImpl.GetText(mImpl.GetRow(place), column));
}

std::optional<bool> UI_MultiColumnTree::TreePeer::GetCheckState(int place, int column) const {
    const RowPtr row = mImpl.GetRow(place);
    return row ? mImpl.GetCells().GetCheckState(*row, column) : std::nullopt;
}

bool UI_MultiColumnTree::TreePeer::IsSelected(int place) const {
    return mImpl.GetSelection().IsSelected(mImpl.GetRow(place));
}

void UI_MultiColumnTree::TreePeer::DrawCell(QPainter& painter, int place, int column, const QRect& cell) {
    const RowPtr row = mImpl.GetRow(place);
    // It may be replaced while it runs.
    const DrawCellOfRowCallback callback = mImpl.GetCallbacks().draw;
    if (!row || callback.empty()) return;
    const QPointF origin = GetDrawOrigin(GetNode()) + GetTreeWidget()->viewport()->pos();
    const zelcore::geom::RectF frame = {static_cast<float>(origin.x() + cell.x()),
                                        static_cast<float>(origin.y() + cell.y()), static_cast<float>(cell.width()),
                                        static_cast<float>(cell.height())};
    const bool isHighlighted = row->mIsSelected;
    const Impl::Calling calling(mImpl);
    const drawbot::PainterDrawbot drawbot(painter, -origin);
    CallOut("Drawing a cell", [&] { callback(drawbot.Get(), row, column, frame, isHighlighted); });
}

// What the user does

bool UI_MultiColumnTree::TreePeer::OnKey(const QKeyEvent& key) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    bool used = false;
    CallOut("A list's keyboard handler", [&] { used = tree->UI_DoKeyboardEvent(ToKeyboardEvent(key)); });
    return used;
}

void UI_MultiColumnTree::TreePeer::OnPress(int place, int column, Qt::KeyboardModifiers modifiers) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    const Impl::Abilities abilities = mImpl.GetAbilities();
    TreeSelection& selection = mImpl.GetSelection();
    const RowPtr row = mImpl.GetRow(place);
    if (!abilities.rows) return;
    if (!row) {
        if (abilities.deselectOnEmptyClick && abilities.noneSelected) selection.SelectOnly(nullptr);
        return;
    }
    if ((modifiers & Qt::ShiftModifier) != 0 && abilities.multiple)
        selection.ExtendTo(row);
    else if ((modifiers & Qt::ControlModifier) != 0)
        selection.Toggle(row, column);
    else
        selection.SelectOnly(row, column);
}

void UI_MultiColumnTree::TreePeer::OnDrag(int place) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    const RowPtr row = mImpl.GetRow(place);
    const bool isOther = row && row != mImpl.GetSelection().GetCurrent();
    if (isOther && mImpl.GetAbilities().rows && mImpl.GetAbilities().multiple) mImpl.GetSelection().ExtendTo(row);
}

void UI_MultiColumnTree::TreePeer::OnControlEntered(const QWidget& control, bool isByMouse) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    const Peer* const peer = Around(&control);
    const ui::UI_Node* const node = peer != nullptr ? &peer->GetNode() : nullptr;
    // What is beside the controls is a click on the row, with all that goes with it.
    if (dynamic_cast<const UI_ControlView*>(node) == nullptr || tree->UI_IsDisabled()) return;
    const TreeCells::Cell cell = mImpl.GetCells().Find(node);
    if (!cell.first || !mImpl.GetAbilities().rows) return;
    if (!isByMouse) mImpl.ScrollToRow(*cell.first);
    if (mImpl.Contains(cell.first)) mImpl.GetSelection().Enter(cell.first, cell.second);
}

bool UI_MultiColumnTree::TreePeer::OnAdvance(bool forward) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    bool moved = false;
    CallOut("Moving the keyboard focus", [&] { moved = mImpl.GetKeys().Advance(forward); });
    return moved;
}

bool UI_MultiColumnTree::TreePeer::OnKeyInButton(const QKeyEvent& key) { return OnKey(key); }

void UI_MultiColumnTree::TreePeer::OnSelectedByReader(int place) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    const RowPtr row = mImpl.GetRow(place);
    const bool maySelect = mImpl.GetAbilities().rows && (row || mImpl.GetAbilities().noneSelected);
    if (maySelect) mImpl.GetSelection().SelectOnly(row);
}

void UI_MultiColumnTree::TreePeer::OnScrolled(int x, int y) { mImpl.OnScrolled(x, y); }

void UI_MultiColumnTree::TreePeer::OnViewChanged() {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree = mImpl.Hold();
    CallOut("Laying out a list", [this] { mImpl.OnViewChanged(); });
}

void UI_MultiColumnTree::TreePeer::OnNeeded() { mImpl.Flush(); }

void UI_MultiColumnTree::TreePeer::OnColumnResized(int column, int width) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    mImpl.Changed();
    mImpl.GetColumns().SetWidth(column, static_cast<float>(width));
}

void UI_MultiColumnTree::TreePeer::OnTitleClicked(int column) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    mImpl.SortByUser(column);
}

void UI_MultiColumnTree::TreePeer::OnBestFitWanted(int column) {
    const boost::intrusive_ptr<UI_MultiColumnTree> tree(&mImpl.GetTree());
    const UI_MultiColumnTreeHeaderRow* const header = mImpl.GetColumns().GetHeader();
    if (header == nullptr || header->mBestFitWidth.empty()) return;
    const UI_MultiColumnTreeHeaderRow::ColumnBestFitWidthCallback callback = header->mBestFitWidth;
    CallOut("The best width of a column", [&] { mImpl.GetTree().SetColumnWidth(column, callback(column)); });
}

}  // namespace controls
}  // namespace zelui
