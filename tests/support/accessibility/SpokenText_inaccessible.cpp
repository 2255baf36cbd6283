#include "SpokenText.h"

#include <QAbstractButton>
#include <QLabel>
#include <zelui/QtAccessibility.h>

namespace zeltests {

QString GetSpokenName(QWidget& widget) {
    const QString name = zelui::qt::GetAccessibleName(widget);
    if (!name.isEmpty()) return name;
    if (const QAbstractButton* const button = qobject_cast<QAbstractButton*>(&widget))
        return button->text().remove(QLatin1Char('&'));
    const QLabel* const label = qobject_cast<QLabel*>(&widget);
    return label != nullptr ? label->text() : QString();
}

QString GetSpokenDescription(QWidget& widget) { return zelui::qt::GetAccessibleDescription(widget); }

}  // namespace zeltests
