#include "ProgressBar.h"

#include <climits>
#include <zelui/QtAccessibility.h>

#include "PlainText.h"

namespace zelui {

namespace {

const qsizetype kLongestProgressText = 200;

}  // namespace

ProgressBar::ProgressBar(QWidget* parent) : QProgressBar(parent) { setTextVisible(true); }

void ProgressBar::SetBusy() { setRange(0, 0); }

void ProgressBar::SetCount(unsigned long current, unsigned long total) {
    const unsigned long step = (total - 1) / static_cast<unsigned long>(INT_MAX) + 1;
    setRange(0, static_cast<int>(total / step));
    setValue(static_cast<int>(current / step));
}

void ProgressBar::SetBarText(const QString& text) {
    const QString line = ToOneLine(text, kLongestProgressText);
    if (line == mBarText) return;
    mBarText = line;
    qt::SetAccessibleDescription(*this, mBarText);
    update();
}

QString ProgressBar::text() const {
    const int margin = fontMetrics().averageCharWidth() * 2;
    return fontMetrics().elidedText(mBarText, Qt::ElideRight, width() - margin);
}

}  // namespace zelui
