#include "TreeHeader.h"

#include <QHelpEvent>
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
