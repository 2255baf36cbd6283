#include "TreeHeader.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionHeader>
#include <QToolTip>

#include "ControlText.h"
#include "PlainText.h"

namespace zelui {

TreeHeader::TreeHeader(QWidget& parent) : QHeaderView(Qt::Horizontal, &parent) {
    setSectionsClickable(true);
    setSectionsMovable(false);
    setHighlightSections(false);
    setStretchLastSection(false);
    setSectionResizeMode(QHeaderView::Interactive);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setTextElideMode(Qt::ElideRight);
}

bool TreeHeader::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
    const QHelpEvent& help = static_cast<const QHelpEvent&>(*event);
    return ShowToolTip(help.pos(), help.globalPos());
}

// Beside the last column the header goes on, as otherwise it would seem to be cut off.
void TreeHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    const int end = length() - offset();
    if (end >= viewport()->width()) return;
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = QRect(end, 0, viewport()->width() - end, viewport()->height());
    option.position = QStyleOptionHeader::End;
    QPainter painter(viewport());
    style()->drawControl(QStyle::CE_HeaderSection, &option, &painter, this);
}

bool TreeHeader::ShowToolTip(const QPoint& point, const QPoint& globalPoint) {
    const int section = logicalIndexAt(point);
    const QString title =
        section >= 0 ? model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString() : QString();
    const QString tip =
        section >= 0 && sectionSizeFromContents(section).width() > sectionSize(section) ? ToToolTip(title) : QString();
    QToolTip::showText(globalPoint, tip, viewport());
    return true;
}

}  // namespace zelui
