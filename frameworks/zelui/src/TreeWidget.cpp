#include "TreeWidget.h"

#include <algorithm>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QItemSelection>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyleOptionFrame>
#include <QToolTip>

#include "ControlText.h"
#include "PlainText.h"
#include "StyleEdge.h"
#include "TreeClient.h"
#include "TreeHeader.h"
#include "TreePainting.h"

namespace zelui {

namespace {

constexpr int kDragPeriod = 50;
// What texts in cells have beside them on the left.
constexpr int kTextMargin = 6;

bool IsTab(const QKeyEvent& key) {
    const bool tab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
    return tab && (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
}

bool MovesInRows(const QKeyEvent& key) {
    const int keys[] = {Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left, Qt::Key_Right,
                        Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    return std::find(std::begin(keys), std::end(keys), key.key()) != std::end(keys);
}

}  // namespace

TreeWidget::TreeWidget(QWidget& parent, TreeClient& client)
    : QTableView(&parent),
      mClient(&client),
      mModel(*new TreeModel(*this, client)),
      mHeader(*new TreeHeader(*this)),
      mLook() {
    // The table makes a selection of its own for the model, which nobody has chosen.
    const QScopedValueRollback<bool> showing(mIsShowing, true);
    // The places of cells are counted from the left.
    setLayoutDirection(Qt::LeftToRight);
    setHorizontalHeader(&mHeader);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setModel(&mModel);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setAutoScroll(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    ConnectHeader();
}

void TreeWidget::LetGoOfClient() {
    mClient = nullptr;
    mModel.LetGoOfClient();
    mDragTimer.stop();
}

void TreeWidget::ConnectHeader() {
    // The table's own answers: selecting the column, and measuring all of its cells.
    disconnect(&mHeader, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(&mHeader, &QHeaderView::sectionEntered, this, nullptr);
    disconnect(&mHeader, &QHeaderView::sectionHandleDoubleClicked, this, nullptr);
    connect(&mHeader, &QHeaderView::sectionClicked, this, [this](int column) {
        if (mClient != nullptr) mClient->OnTitleClicked(column);
    });
    connect(&mHeader, &QHeaderView::sectionHandleDoubleClicked, this, [this](int column) {
        if (mClient != nullptr) mClient->OnBestFitWanted(column);
    });
    connect(&mHeader, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (mClient != nullptr && !mIsShowing) mClient->OnColumnResized(column, width);
    });
}

// What there is to show

void TreeWidget::Show(const Look& look) {
    const QScopedValueRollback<bool> showing(mIsShowing, true);
    const Look former = mLook;
    mLook = look;
    verticalHeader()->setMinimumSectionSize(1);
    if (verticalHeader()->defaultSectionSize() != look.rowHeight)
        verticalHeader()->setDefaultSectionSize(look.rowHeight);
    mModel.Sync(former.rowsGeneration != look.rowsGeneration);
    ShowHeader();
    updateGeometries();
    horizontalScrollBar()->setValue(look.scrollX);
    verticalScrollBar()->setValue(look.scrollY);
    ShowSelection(former);
    viewport()->update();
}

void TreeWidget::ShowHeader() {
    mHeader.setVisible(mLook.headerHeight > 0);
    if (mLook.headerHeight > 0) mHeader.setFixedHeight(mLook.headerHeight);
    mHeader.setMinimumSectionSize(1);
    for (int i = 0; i < std::min(mHeader.count(), static_cast<int>(mLook.widths.size())); ++i) {
        const int width = mLook.widths[static_cast<std::size_t>(i)];
        if (mHeader.sectionSize(i) != width) mHeader.resizeSection(i, width);
    }
    mHeader.setSortIndicatorShown(mLook.sortColumn >= 0);
    mHeader.setSortIndicator(mLook.sortColumn, mLook.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

// For screen readers: who draws and handles the keys knows it from the client.
void TreeWidget::ShowSelection(const Look& former) {
    if (selectionMode() != mLook.selectionMode) setSelectionMode(mLook.selectionMode);
    const int rows = mModel.rowCount(QModelIndex());
    const int columns = mModel.columnCount(QModelIndex());
    const bool isTheSame =
        former.selectionGeneration == mLook.selectionGeneration && former.rowsGeneration == mLook.rowsGeneration;
    if (isTheSame || columns == 0) return;
    QItemSelection selection;
    for (int first = 0; first < rows; ++first) {
        if (!mClient->IsSelected(first)) continue;
        int last = first;
        while (last + 1 < rows && mClient->IsSelected(last + 1)) ++last;
        selection.select(mModel.index(first, 0, QModelIndex()), mModel.index(last, columns - 1, QModelIndex()));
        first = last;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const QModelIndex current = mModel.index(mLook.currentPlace, std::max(0, mLook.currentCell), QModelIndex());
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

void TreeWidget::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (!mIsShowing && mClient != nullptr)
        mClient->OnSelectedByReader(selected.isEmpty() ? -1 : selected.first().top());
}

// Where rows and cells are

QRect TreeWidget::GetRowRect(int place) const {
    return QRect(0, place * mLook.rowHeight - verticalOffset(), viewport()->width(), mLook.rowHeight);
}

int TreeWidget::GetPlaceAt(int y) const {
    const int place = mLook.rowHeight > 0 && y + verticalOffset() >= 0 ? (y + verticalOffset()) / mLook.rowHeight : -1;
    return place < mModel.rowCount(QModelIndex()) ? place : -1;
}

int TreeWidget::GetColumnAt(int x) const { return mHeader.logicalIndexAt(x); }

QRect TreeWidget::GetCellRect(int place, int column) const {
    const QRect row = GetRowRect(place);
    return QRect(mHeader.sectionViewportPosition(column), row.top(), mHeader.sectionSize(column), row.height());
}

// Painting

void TreeWidget::paintEvent(QPaintEvent* event) {
    const QPointer<TreeWidget> self(this);
    QPainter painter(viewport());
    const int last = mModel.rowCount(QModelIndex()) - 1;
    const int bottom = mLook.rowHeight > 0 ? (event->rect().bottom() + verticalOffset()) / mLook.rowHeight : -1;
    for (int place = std::max(0, GetPlaceAt(event->rect().top())); place <= std::min(bottom, last); ++place) {
        if (!self || mClient == nullptr) return;
        PaintRow(painter, place, event->rect());
    }
    if (self && mClient != nullptr) PaintFocus(painter);
}

void TreeWidget::PaintRow(QPainter& painter, int place, const QRect& exposed) {
    PaintRowBackground(painter, *this, GetRowRect(place), place % 2 != 0, mClient->IsSelected(place));
    const QPointer<TreeWidget> self(this);
    for (int column = 0; self && mClient != nullptr && column < mHeader.count(); ++column) {
        const QRect cell = GetCellRect(place, column);
        if (!cell.intersects(exposed)) continue;
        painter.save();
        painter.setClipRect(cell, Qt::IntersectClip);
        if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
        mClient->DrawCell(painter, place, column, cell);
        painter.restore();
    }
}

void TreeWidget::PaintFocus(QPainter& painter) {
    if (!hasFocus() || mLook.currentPlace < 0) return;
    const bool isSelected = mClient->IsSelected(mLook.currentPlace);
    const bool isCell = isSelected && mLook.currentCell >= 0;
    PaintFocusLine(painter, *this,
                   isCell ? GetCellRect(mLook.currentPlace, mLook.currentCell) : GetRowRect(mLook.currentPlace),
                   isSelected);
}

void TreeWidget::initStyleOption(QStyleOptionFrame* option) const {
    QTableView::initStyleOption(option);
    UseEdgeColor(*option, *this, EdgeOf::kFrame, GetFrameEdgeColor());
}

// A list without a current row would show nothing of the focus otherwise.
void TreeWidget::PaintFocusFrame() {
    if (!hasFocus() || (!mLook.indicateFocus && mLook.currentPlace >= 0)) return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Active, QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

// Events

bool TreeWidget::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress && IsTab(static_cast<QKeyEvent&>(*event)))
        return OnTab(static_cast<QKeyEvent&>(*event));
    const bool handled = QTableView::event(event);
    if (event->type() == QEvent::Paint) PaintFocusFrame();
    return handled;
}

bool TreeWidget::OnTab(QKeyEvent& key) {
    const QPointer<TreeWidget> self(this);
    const bool forward = key.key() == Qt::Key_Tab && (key.modifiers() & Qt::ShiftModifier) == 0;
    const bool used = mClient != nullptr && mClient->OnKey(key);
    // What moves the focus is used up: the widgets round this one would move it once more.
    key.setAccepted(used || (self && focusNextPrevChild(forward)));
    return true;
}

bool TreeWidget::focusNextPrevChild(bool next) {
    const QPointer<TreeWidget> self(this);
    if (mClient != nullptr && !hasFocus() && mClient->OnAdvance(next)) return true;
    return self && QTableView::focusNextPrevChild(next);
}

bool TreeWidget::viewportEvent(QEvent* event) {
    switch (event->type()) {
        case QEvent::ChildAdded:
            Watch(static_cast<QChildEvent*>(event)->child());
            break;
        case QEvent::Paint:
            if (mClient != nullptr) mClient->OnNeeded();
            break;
        case QEvent::ToolTip: {
            const QHelpEvent& help = static_cast<const QHelpEvent&>(*event);
            return ShowCellToolTip(help.pos(), help.globalPos());
        }
        default:
            break;
    }
    return QTableView::viewportEvent(event);
}

bool TreeWidget::ShowCellToolTip(const QPoint& point, const QPoint& globalPoint) {
    const int place = GetPlaceAt(point.y());
    const int column = GetColumnAt(point.x());
    const QString text = place >= 0 && column >= 0 && mClient != nullptr ? mClient->GetText(place, column) : QString();
    const bool isCutOff = !text.isEmpty() && GetNeededWidth(font(), text) + kTextMargin > mHeader.sectionSize(column);
    QToolTip::showText(globalPoint, isCutOff ? ToToolTip(text) : QString(), viewport());
    return true;
}

// Controls in cells are watched, as what they use themselves never comes here.
void TreeWidget::Watch(QObject* object) {
    if (!object->isWidgetType()) return;
    object->installEventFilter(this);
    for (QObject* const child : object->children()) Watch(child);
}

bool TreeWidget::eventFilter(QObject* watched, QEvent* event) {
    if (mClient != nullptr && watched->isWidgetType() && watched != viewport()) {
        QWidget& widget = static_cast<QWidget&>(*watched);
        if (event->type() == QEvent::ChildAdded)
            Watch(static_cast<QChildEvent*>(event)->child());
        else if (viewport()->isAncestorOf(&widget) && OnCellEvent(widget, *event))
            return true;
    }
    return QTableView::eventFilter(watched, event);
}

bool TreeWidget::OnCellEvent(QWidget& widget, QEvent& event) {
    const QPointer<QWidget> held(&widget);
    switch (event.type()) {
        case QEvent::MouseButtonPress:
            // Of what is disabled buttons alone keep the press for themselves.
            if (!widget.isEnabled() && qobject_cast<QAbstractButton*>(&widget) == nullptr) return false;
            mClient->OnControlEntered(widget, true);
            // Its row was taken away: the press is meant for nobody who is still there.
            return !held || !held->isVisible();
        case QEvent::Wheel:
            if (widget.isEnabled()) return false;
            QCoreApplication::sendEvent(verticalScrollBar(), &event);
            return true;
        case QEvent::FocusIn: {
            const Qt::FocusReason reason = static_cast<QFocusEvent&>(event).reason();
            if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
                mClient->OnControlEntered(widget, reason == Qt::MouseFocusReason);
            return false;
        }
        case QEvent::KeyPress: {
            const QKeyEvent& key = static_cast<const QKeyEvent&>(event);
            return qobject_cast<QAbstractButton*>(&widget) != nullptr && MovesInRows(key) &&
                   mClient->OnKeyInButton(key);
        }
        default:
            return false;
    }
}

void TreeWidget::keyPressEvent(QKeyEvent* event) { event->setAccepted(mClient != nullptr && mClient->OnKey(*event)); }

// Mouse

void TreeWidget::mousePressEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() != Qt::LeftButton || mClient == nullptr) return;
    mClient->OnNeeded();
    const QPoint point = event->position().toPoint();
    const int place = GetPlaceAt(point.y());
    mIsDragging = place >= 0;
    mDragPoint = point;
    if (mClient != nullptr) mClient->OnPress(place, GetColumnAt(point.x()), event->modifiers());
}

void TreeWidget::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void TreeWidget::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    if (!mIsDragging || (event->buttons() & Qt::LeftButton) == 0) return;
    mDragPoint = event->position().toPoint();
    const bool isOutside = mDragPoint.y() < 0 || mDragPoint.y() >= viewport()->height();
    if (!isOutside) mDragTimer.stop();
    if (isOutside && !mDragTimer.isActive()) mDragTimer.start(kDragPeriod, this);
    Drag();
}

void TreeWidget::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    mIsDragging = false;
    mDragTimer.stop();
}

void TreeWidget::Drag() {
    const int last = mModel.rowCount(QModelIndex()) - 1;
    const int y = std::clamp(mDragPoint.y(), 0, std::max(0, viewport()->height() - 1));
    const int place = GetPlaceAt(y);
    if (mClient != nullptr && last >= 0) mClient->OnDrag(place >= 0 ? place : last);
}

void TreeWidget::timerEvent(QTimerEvent* event) {
    if (event->timerId() != mDragTimer.timerId()) return QTableView::timerEvent(event);
    const int step = mDragPoint.y() < 0 ? -mLook.rowHeight : mLook.rowHeight;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + step);
    Drag();
}

// Focus, size, view

void TreeWidget::focusInEvent(QFocusEvent* event) {
    // Not the table's own, which would make a row the current one.
    QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    update();
    viewport()->update();
}

void TreeWidget::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    update();
    viewport()->update();
}

void TreeWidget::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (mClient != nullptr) mClient->OnViewChanged();
}

void TreeWidget::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    if (mClient != nullptr) mClient->OnViewChanged();
}

void TreeWidget::hideEvent(QHideEvent* event) {
    QTableView::hideEvent(event);
    mIsDragging = false;
    mDragTimer.stop();
    if (mClient != nullptr) mClient->OnViewChanged();
}

void TreeWidget::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (mClient != nullptr) mClient->OnScrolled(horizontalOffset(), verticalOffset());
}

}  // namespace zelui
