#include "PlainText.h"

namespace zelui {

namespace {

const QChar kEllipsis(0x2026);
const QChar kZeroWidthSpace(0x200B);

bool IsPlaceToBreak(QChar character) {
    return character.isSpace() || character == u'/' || character == u'\\' || character == u'-';
}

// Breaking before these would tear a character apart.
bool ContinuesCharacter(QChar character) {
    return character.isLowSurrogate() || character.isMark() || character == QChar(0x200D);
}

bool IsLineEnd(QChar character) {
    return character == u'\n' || character == u'\r' || character.category() == QChar::Separator_Line ||
           character.category() == QChar::Separator_Paragraph;
}

// Where the first `lines` lines end, of which each `width` characters of a longer one count as one.
qsizetype FindEndOfLines(const QString& text, qsizetype lines, qsizetype width) {
    qsizetype column = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool firstHalf = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        const bool ends = IsLineEnd(text[i]) && !firstHalf;
        if ((ends || column == width) && --lines == 0) return i;
        column = ends ? 0 : column % width + 1;
    }
    return text.size();
}

}  // namespace

QString ToOneLine(const QString& text, qsizetype limit) {
    QString line = text;
    if (line.size() > limit) {
        const qsizetype half = (limit - 1) / 2;
        qsizetype head = half;
        qsizetype tail = line.size() - half;
        if (line[head].isLowSurrogate()) --head;
        if (line[tail].isLowSurrogate()) ++tail;
        line = line.left(head) + kEllipsis + line.mid(tail);
    }
    for (QChar& character : line) {
        if (IsLineEnd(character) || character.category() == QChar::Other_Control) character = u' ';
    }
    return line;
}

QString CutOff(const QString& text, qsizetype lines, qsizetype width) {
    qsizetype end = FindEndOfLines(text, lines, width);
    if (end >= text.size()) return text;
    if (end > 0 && text[end].isLowSurrogate()) --end;
    return text.left(end) + kEllipsis;
}

QString MakeBreakable(const QString& text, qsizetype width) {
    QString broken;
    qsizetype run = 0;
    for (const QChar character : text) {
        if (run >= width && !ContinuesCharacter(character) && !IsPlaceToBreak(character)) {
            broken += kZeroWidthSpace;
            run = 0;
        }
        run = IsPlaceToBreak(character) ? 0 : run + 1;
        broken += character;
    }
    return broken;
}

QString ToToolTip(const QString& text) {
    if (text.isEmpty()) return QString();
    return QStringLiteral("<p style='white-space:pre-wrap'>") + MakeBreakable(text, 40).toHtmlEscaped() +
           QStringLiteral("</p>");
}

QString ToWindowTitle(const QString& text) {
    return ToOneLine(text, 200).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

}  // namespace zelui
