#include "QtFont.h"

#include <algorithm>

#include <zelui/QtBridge.h>

#include "PlainText.h"

namespace zelui {
namespace drawbot {

namespace {

// Qt's text layout counts in 64ths of a unit in 32 bits and takes a multiple of a text's memory: long texts are
// measured in pieces.
const qsizetype kMeasuredAtOnce = 10000;
// A character is no longer than this, whatever a text claims.
const qsizetype kLongestCharacter = 64;

bool IsJoiner(QChar unit) { return unit == QChar(0x200D); }

bool IsWithinCharacter(const QString& text, qsizetype position) {
    return text[position].isLowSurrogate() || text[position].isMark() || IsJoiner(text[position]) ||
           IsJoiner(text[position - 1]);
}

}  // namespace

qsizetype FindCut(const QString& text, qsizetype position) {
    if (position >= text.size()) return text.size();
    const qsizetype first = std::max<qsizetype>(1, position - kLongestCharacter);
    for (qsizetype cut = position; cut >= first; --cut) {
        if (!IsWithinCharacter(text, cut)) return cut;
    }
    return std::max<qsizetype>(1, position);
}

QString ToDrawnLine(const zelcore::ustring& text) {
    const QString line = qt::ToQString(text);
    return ToOneLine(line, line.size());
}

QtFont::QtFont(const QFont& font) : mFont(font), mMetrics(font) {}

float QtFont::GetStringWidth(const zelcore::ustring& text) const {
    QString rest = ToDrawnLine(text);
    double width = 0.0;
    while (rest.size() > kMeasuredAtOnce) {
        const qsizetype cut = FindCut(rest, kMeasuredAtOnce);
        width += mMetrics.horizontalAdvance(rest.left(cut));
        rest.remove(0, cut);
    }
    return static_cast<float>(width + mMetrics.horizontalAdvance(rest));
}

float QtFont::GetAscent() const { return static_cast<float>(mMetrics.ascent()); }

float QtFont::GetDescent() const { return static_cast<float>(mMetrics.descent()); }

}  // namespace drawbot
}  // namespace zelui
