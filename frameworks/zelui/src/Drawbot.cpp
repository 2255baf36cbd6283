#include <algorithm>
#include <QList>
#include <QTextBoundaryFinder>

#include <zelui/Drawbot.h>
#include <zelui/QtBridge.h>

#include "QtFont.h"

namespace zelui {
namespace drawbot {

namespace {

const qsizetype kLongText = 10000;

// Whether it is at most `width` wide. Of a text without end only the beginning is measured when that is too wide.
bool Fits(const QString& text, const Font& font, float width) {
    if (text.size() > kLongText && !(font.GetStringWidth(qt::FromQString(text.left(kLongText))) <= width)) return false;
    return font.GetStringWidth(qt::FromQString(text)) <= width;
}

// Shortens one text to a number of characters, as a person counts them.
class Shortener {
public:
    Shortener(const QString& text, TruncateMode mode) : mText(text), mMode(mode) {
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
        for (qsizetype at = 0; at != -1; at = finder.toNextBoundary()) mEdges.append(at);
        if (mEdges.last() != text.size()) mEdges.append(text.size());
    }

    qsizetype GetCount() const { return mEdges.size() - 1; }

    QString Keep(qsizetype count) const {
        const qsizetype head = mMode == kTruncateEnd ? count : mMode == kTruncateStart ? 0 : count - count / 2;
        const qsizetype tail = GetCount() - (count - head);
        return mText.left(mEdges[head]) + QChar(0x2026) + mText.mid(mEdges[tail]);
    }

private:
    const QString& mText;
    TruncateMode mMode;
    QList<qsizetype> mEdges;
};

}  // namespace

Font::Font() = default;
Font::~Font() = default;
Path::Path() = default;
Path::~Path() = default;
Drawbot::Drawbot() = default;
Drawbot::~Drawbot() = default;

zelcore::ustring TruncateString(const zelcore::ustring& text, const Font& font, float width, TruncateMode mode) {
    const QString whole = qt::ToQString(text);
    if (mode < kTruncateStart || mode > kTruncateMiddle || Fits(whole, font, width)) return text;
    const Shortener shortener(whole, mode);
    if (!Fits(shortener.Keep(0), font, width)) return zelcore::ustring();
    // From few to many, so that a long text costs no more than what of it fits.
    qsizetype fits = 0;
    qsizetype tooMany = 1;
    while (tooMany < shortener.GetCount() && Fits(shortener.Keep(tooMany), font, width)) {
        fits = tooMany;
        tooMany *= 2;
    }
    tooMany = std::min(tooMany, shortener.GetCount());
    while (tooMany - fits > 1) {
        const qsizetype middle = fits + (tooMany - fits) / 2;
        (Fits(shortener.Keep(middle), font, width) ? fits : tooMany) = middle;
    }
    return qt::FromQString(shortener.Keep(fits));
}

}  // namespace drawbot
}  // namespace zelui
