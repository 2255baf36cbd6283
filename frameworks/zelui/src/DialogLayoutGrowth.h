#pragma once

#include <zelui/Export.h>

#include "DialogLayoutItem.h"

namespace zelui {

/// Gives the children of nodes with a flow the sizes that their texts need where the frames that they have are too
/// small for them; those behind them move on, nodes grow with their children, and the root in the end, as far as they
/// have to. To be done once, before the first layout.
ZELUI_API void GrowForTexts(DialogLayoutItem& root);

/// How large a control has to be for its text to be seen in full, in display units; 0, 0 for other nodes.
ZELUI_API zelcore::geom::PointF GetTextNeed(const ui::UI_Node& node);

}  // namespace zelui
