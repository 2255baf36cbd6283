#pragma once

#include <QColor>

#include <zelui/Export.h>

namespace zelui {

/// By the measure of the accessibility guidelines: from 1 for the same to 21 for black on white.
ZELUI_API double GetContrast(const QColor& one, const QColor& other);

/// `from` with so much of `to` in it: 0 for nothing, 1 for `to`.
QColor Mix(const QColor& from, const QColor& to, float part);

}  // namespace zelui
