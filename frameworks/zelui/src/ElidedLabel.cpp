#include "ElidedLabel.h"

#include <QEvent>
#include <zelui/QtAccessibility.h>

#include "PlainText.h"

namespace zelui {

namespace {

// More than any path or name that means something.
const qsizetype kLongestLabel = 2000;

}  // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::SetFullText(const QString& text) {
    const QString line = ToOneLine(text, kLongestLabel);
    if (line == mFullText) return;
    mFullText = line;
    qt::SetAccessibleName(*this, mFullText);
    setToolTip(ToToolTip(mFullText));
    ShowWhatFits();
}

// Not the text's own size: the window would change its width with every text.
QSize ElidedLabel::sizeHint() const {
    return QSize(fontMetrics().averageCharWidth() * 40, fontMetrics().lineSpacing());
}

QSize ElidedLabel::minimumSizeHint() const { return QSize(0, sizeHint().height()); }

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    ShowWhatFits();
}

void ElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) ShowWhatFits();
}

void ElidedLabel::ShowWhatFits() {
    setText(fontMetrics().elidedText(mFullText, Qt::ElideMiddle, contentsRect().width()));
}

}  // namespace zelui
