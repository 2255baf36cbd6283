#pragma once

#include <QString>

namespace zelui {

/// Texts come from plug-ins, folders and files: what Qt would read as markup or as a command must be shown as it is,
/// and a length without end must not make a window without end.

/// One line for display: line ends, tabs and other control characters become spaces; at most `limit` characters, the
/// middle left out for "…".
QString ToOneLine(const QString& text, qsizetype limit);

/// What of the beginning fits into `lines` lines of `width` characters, with "…" for the rest.
QString CutOff(const QString& text, qsizetype lines, qsizetype width);

/// Adds invisible places to break a line within words that have none for `width` characters.
QString MakeBreakable(const QString& text, qsizetype width);

/// A tool tip that shows `text` as it is, wrapped where it is long.
QString ToToolTip(const QString& text);

/// A window title that shows `text` as it is: Qt reads "[*]" as a place for its mark of unsaved changes.
QString ToWindowTitle(const QString& text);

}  // namespace zelui
