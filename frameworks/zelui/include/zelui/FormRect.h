#pragma once

#include <zelui/Drawbot.h>

namespace zelui {
namespace utils {

/// Adds `rect` to `path`: from its left top corner clockwise, closed.
ZELUI_API void FormRect(drawbot::Path& path, const zelcore::geom::RectF& rect);

}  // namespace utils
}  // namespace zelui
