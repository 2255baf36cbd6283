#include "EditableText.h"

namespace zelui {

namespace {

bool IsBlankInALine(QChar character) {
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

// How many code units of the beginning of `text`, which is not empty, are one character; 0 for half of one.
qsizetype GetCharacterLength(QStringView text) {
    if (!text.front().isSurrogate()) return 1;
    const bool pair = text.front().isHighSurrogate() && text.size() > 1 && text[1].isLowSurrogate();
    return pair ? 2 : 0;
}

}  // namespace

QString ToEditableText(QStringView text, qsizetype limit) {
    QString line;
    while (!text.empty()) {
        const qsizetype length = GetCharacterLength(text);
        if (line.size() + length > limit) break;
        if (length == 1 && IsBlankInALine(text.front()))
            line += u' ';
        else
            line += text.left(length);
        text = text.mid(text.startsWith(QLatin1String("\r\n")) ? 2 : qMax<qsizetype>(length, 1));
    }
    return line;
}

}  // namespace zelui
