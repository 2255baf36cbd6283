#include "ChainView.h"

#include <algorithm>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>

#include <boost/bind/bind.hpp>
#include <zelui/QtAccessibility.h>

#include "FormatName.h"
#include "LocalText.h"
#include "Session.h"

namespace tessaly {

using zelui::qt::ToQString;

namespace {

enum Column { kEffectColumn, kVendorColumn, kFormatColumn, kStateColumn, kColumnCount };

QString GetStateText(const ChainEffect& effect) {
    if (effect.IsMissing()) return LocalText("$$$/tessaly/Chain/Missing=Missing");
    return effect.IsBypassed() ? LocalText("$$$/tessaly/Chain/Bypassed=Bypassed") : QString();
}

}  // namespace

ChainView::ChainView(Session& session) : mSession(session) {
    setObjectName(QStringLiteral("Chain"));
    zelui::qt::SetAccessibleName(*this, LocalText("$$$/tessaly/Chain/Name=Effect chain"));
    setColumnCount(kColumnCount);
    setHeaderLabels({LocalText("$$$/tessaly/Chain/Effect=Effect"), LocalText("$$$/tessaly/Chain/Vendor=Vendor"),
                     LocalText("$$$/tessaly/Chain/Format=Format"), LocalText("$$$/tessaly/Chain/State=State")});
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(kEffectColumn, QHeaderView::Stretch);
    for (const Column column : {kVendorColumn, kFormatColumn, kStateColumn})
        header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    header()->setSectionsMovable(false);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setDragDropMode(QAbstractItemView::InternalMove);
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int) {
        const bool on = item->checkState(kEffectColumn) == Qt::Checked;
        mSession.SetBypassed(static_cast<std::size_t>(indexOfTopLevelItem(item)), !on);
    });
    connect(this, &QTreeWidget::itemActivated, this, [this] { mOpen(); });
    connect(this, &QTreeWidget::currentItemChanged, this, [this] {
        NoteChosen();
        mChosen();
    });
    mChainConnection = mSession.GetChainChangedSignal().connect(boost::bind(&ChainView::Refresh, this));
    Refresh();
}

int ChainView::GetCurrentIndex() const { return indexOfTopLevelItem(currentItem()); }

void ChainView::SetCurrentIndex(int index) { setCurrentItem(topLevelItem(index)); }

void ChainView::Refresh() {
    {
        // What is shown follows the session: no row says anything back. Rows are kept, as one of them may be the one
        // whose box is being clicked.
        const QSignalBlocker silence(this);
        const int count = static_cast<int>(mSession.GetEffects().size());
        const int chosen = FindChosen();
        while (topLevelItemCount() > count) delete takeTopLevelItem(topLevelItemCount() - 1);
        while (topLevelItemCount() < count) addTopLevelItem(new QTreeWidgetItem);
        for (int i = 0; i < count; ++i) RefreshRow(i);
        SetCurrentIndex(chosen);
        NoteChosen();
    }
    viewport()->update();
    mChosen();
}

/// The row of the chosen effect; of one that is gone, the row that took its place.
int ChainView::FindChosen() const {
    const std::vector<ChainEffectPtr>& effects = mSession.GetEffects();
    const auto found = std::find(effects.begin(), effects.end(), mChosenEffect.lock());
    if (found != effects.end()) return static_cast<int>(found - effects.begin());
    return std::min(GetCurrentIndex(), static_cast<int>(effects.size()) - 1);
}

void ChainView::NoteChosen() {
    mChosenEffect.reset();
    if (GetCurrentIndex() >= 0) mChosenEffect = mSession.GetEffects()[static_cast<std::size_t>(GetCurrentIndex())];
}

void ChainView::ToggleCurrent() {
    const auto index = static_cast<std::size_t>(GetCurrentIndex());
    mSession.SetBypassed(index, !mSession.GetEffects()[index]->IsBypassed());
}

void ChainView::RefreshRow(int index) {
    const ChainEffect& effect = *mSession.GetEffects()[static_cast<std::size_t>(index)];
    QTreeWidgetItem* const item = topLevelItem(index);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled);
    item->setCheckState(kEffectColumn, effect.IsBypassed() ? Qt::Unchecked : Qt::Checked);
    item->setText(kEffectColumn, ToQString(effect.GetName()));
    item->setText(kVendorColumn, ToQString(effect.GetVendor()));
    item->setText(kFormatColumn, ToQString(GetFormatName(effect.GetLocator().GetTechnologyType())));
    item->setText(kStateColumn, GetStateText(effect));
    const QString trouble = ToQString(effect.GetTrouble());
    const QVariant colour =
        effect.IsMissing() ? QVariant(palette().brush(QPalette::Disabled, QPalette::Text)) : QVariant();
    for (int column = 0; column < kColumnCount; ++column) {
        item->setToolTip(column, ToolTipText(trouble));
        item->setData(column, Qt::ForegroundRole, colour);
    }
    DescribeRow(*item);
    item->setData(kEffectColumn, Qt::AccessibleDescriptionRole, trouble);
}

/// For screen readers, which say what a missing effect's colour does, and stop at empty cells too.
void ChainView::DescribeRow(QTreeWidgetItem& item) {
    const QString state = item.text(kStateColumn);
    item.setData(kEffectColumn, Qt::AccessibleTextRole,
                 state.isEmpty() ? item.text(kEffectColumn) : item.text(kEffectColumn) + ", " + state);
    item.setData(kStateColumn, Qt::AccessibleTextRole, state.isEmpty() ? LocalText("$$$/tessaly/Chain/On=On") : state);
    for (const Column column : {kVendorColumn, kFormatColumn}) {
        const QString text = item.text(column);
        item.setData(column, Qt::AccessibleTextRole,
                     text.isEmpty() ? LocalText("$$$/tessaly/Chain/Unknown=Unknown") : text);
    }
}

void ChainView::MoveTo(int from, int to) {
    if (from < 0 || to < 0 || to >= topLevelItemCount() || from == to) return;
    mSession.Move(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
    SetCurrentIndex(to);
}

void ChainView::MoveCurrent(int direction) { MoveTo(GetCurrentIndex(), GetCurrentIndex() + direction); }

void ChainView::RemoveCurrent() {
    if (GetCurrentIndex() >= 0) mSession.Remove(static_cast<std::size_t>(GetCurrentIndex()));
}

void ChainView::keyPressEvent(QKeyEvent* event) {
    const bool moves = event->modifiers() & Qt::AltModifier;
    // Whichever column is the current one.
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier && GetCurrentIndex() >= 0)
        ToggleCurrent();
    else if (event->key() == Qt::Key_Delete)
        RemoveCurrent();
    else if (moves && event->key() == Qt::Key_Up)
        MoveCurrent(-1);
    else if (moves && event->key() == Qt::Key_Down)
        MoveCurrent(1);
    else
        QTreeWidget::keyPressEvent(event);
}

int ChainView::GetDropIndex(const QPoint& position) const {
    const int last = topLevelItemCount() - 1;
    QTreeWidgetItem* const item = itemAt(position);
    if (item == nullptr) return last;
    int index = indexOfTopLevelItem(item);
    if (dropIndicatorPosition() == BelowItem) ++index;
    // The row that goes makes room for those behind it.
    return std::clamp(index > GetCurrentIndex() ? index - 1 : index, 0, last);
}

void ChainView::dropEvent(QDropEvent* event) {
    if (event->source() != this) return;
    const int from = GetCurrentIndex();
    const int to = GetDropIndex(event->position().toPoint());
    // The session moves the effect; the rows only follow.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    QMetaObject::invokeMethod(
        this, [this, from, to] { MoveTo(from, to); }, Qt::QueuedConnection);
}

void ChainView::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    // Rows of missing effects have a colour of their own.
    if (event->type() == QEvent::PaletteChange) Refresh();
}

void ChainView::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                     LocalText("$$$/tessaly/Chain/Empty=No effects. The sound passes as it is."));
}

}  // namespace tessaly
