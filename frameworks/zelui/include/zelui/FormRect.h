#pragma once

#include <zelui/Drawbot.h>

namespace zelui {
namespace utils {

/// Adds the outline of `rect` to `path`: from its left top corner clockwise, closed. Of a rectangle without a width or
/// a height that is the line that it has shrunk to; one whose edges are no finite numbers adds nothing.
ZELUI_API void FormRect(drawbot::Path& path, const zelcore::geom::RectF& rect);

}  // namespace utils
}  // namespace zelui
