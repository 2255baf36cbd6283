#pragma once

#include <QPalette>

namespace zelui {
namespace ui {

/// All colours of the light or the dark theme; no role is left to the system. Texts stand out from what is behind them
/// by 4.5 to 1 at least, those of what is disabled by 3 to 1.
QPalette MakeThemePalette(bool dark);

}  // namespace ui
}  // namespace zelui
