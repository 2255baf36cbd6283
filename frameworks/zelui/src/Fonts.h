#pragma once

#include <QFont>

#include <zelcore/ustring.h>

#include <zelui/Export.h>

namespace zelui {

/// The size of texts in controls, in display units.
const float kDefaultTextSize = 11.0f;

/// The font that controls show their texts in, and that texts are measured and drawn with: family name (empty for the
/// application's), drawbot::SupplierInterface::FontStyle and size in display units. The size is rounded to whole units,
/// at least 1: only sizes in units mean the same on every screen and surface. Needs an application object. Exported for
/// the tests alone.
ZELUI_API QFont MakeFont(const zelcore::ustring& name, int style, float size);

}  // namespace zelui
