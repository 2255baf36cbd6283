#pragma once

class QPainter;
class QRect;
class QWidget;

namespace zelui {

/// How much of what stands in a disabled list is left.
constexpr double kDisabledOpacity = 0.5;

/// What is behind a row of `list`. A selected row has the same colour whether the list has the focus or not: texts are
/// drawn in the colour that fits to it.
void PaintRowBackground(QPainter& painter, const QWidget& list, const QRect& row, bool isOdd, bool isSelected);

/// The line round the row or cell that the keys act on.
void PaintFocusLine(QPainter& painter, const QWidget& list, const QRect& place, bool isSelected);

}  // namespace zelui
