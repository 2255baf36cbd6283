#include "PopupWidget.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>

#include "ControlText.h"
#include "SharedPalette.h"

namespace zelui {

PopupWidget::PopupWidget(QWidget& parent) : QComboBox(&parent) {}

void PopupWidget::SetItems(const QStringList& items) {
    if (items == mItems) return;
    if (mOpen) hidePopup();
    mItems = items;
    const QSignalBlocker blocker(this);
    while (count() > mItems.size()) removeItem(count() - 1);
    while (count() < mItems.size()) addItem(QString());
    WriteTexts();
}

void PopupWidget::SetChoice(int index, const std::optional<QString>& shownText) {
    const QSignalBlocker blocker(this);
    mShownText = shownText;
    if (index != currentIndex()) setCurrentIndex(index);
    setPlaceholderText(shownText.value_or(QString()));
    WriteTexts();
    update();
}

// The other text stands in the chosen item itself while the list is closed: so the widget's own painting, its current
// text and screen readers all have it.
void PopupWidget::WriteTexts() {
    const QSignalBlocker blocker(this);
    for (int i = 0; i < count(); ++i) {
        const QString& text = mShownText && !mOpen && i == currentIndex() ? *mShownText : mItems[i];
        if (itemText(i) != text) setItemText(i, text);
    }
}

void PopupWidget::showPopup() {
    if (count() == 0) return;
    mOpen = true;
    WriteTexts();
    view()->setTextElideMode(Qt::ElideRight);
    view()->window()->installEventFilter(this);
    QComboBox::showPopup();
}

// The list may be closed without hidePopup: by a click elsewhere, or by the window system.
bool PopupWidget::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && mOpen && watched == view()->window()) {
        mOpen = false;
        WriteTexts();
        update();
    }
    return QComboBox::eventFilter(watched, event);
}

int PopupWidget::GetTextWidth() const {
    QStyleOptionComboBox option;
    QComboBox::initStyleOption(&option);
    // The label stands one unit inside of it on both sides.
    return style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this).width() - 2;
}

bool PopupWidget::IsElided() const { return GetNeededWidth(font(), currentText()) > GetTextWidth(); }

void PopupWidget::initStyleOption(QStyleOptionComboBox* option) const {
    QComboBox::initStyleOption(option);
    UseSharedPalette(*option, *this);
    // The list is open over it, or beside it: the popup itself goes on showing what it showed.
    if (mOpen && mShownText) option->currentText = *mShownText;
    option->currentText = fontMetrics().elidedText(option->currentText, Qt::ElideRight, GetTextWidth());
}

}  // namespace zelui
