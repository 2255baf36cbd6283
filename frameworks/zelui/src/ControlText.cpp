#include "ControlText.h"

#include <cmath>
#include <QFontMetricsF>
#include <zelui/QtBridge.h>
#include <zelui/Theme.h>

#include "PlainText.h"

namespace zelui {

namespace {

// More than any name that means something, and little enough to be measured in no time.
const qsizetype kMaximumLength = 2000;

}  // namespace

QString ToControlText(const zelcore::ustring& text) { return ToOneLine(qt::ToQString(text), kMaximumLength); }

QString ToButtonText(const QString& controlText) {
    return QString(controlText).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QFont GetControlFont(float size) { return MakeFont(ui::GetFontName(0), 0, size); }

int GetNeededWidth(const QFont& font, const QString& text) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(text)));
}

}  // namespace zelui
