#include <zelui/FormRect.h>

#include <cmath>

namespace zelui {
namespace utils {

void FormRect(drawbot::Path& path, const zelcore::geom::RectF& rect) {
    const bool isOne = std::isfinite(rect.left) && std::isfinite(rect.top) && std::isfinite(rect.Right()) &&
                       std::isfinite(rect.Bottom());
    if (!isOne) return;
    path.MoveTo({rect.left, rect.top});
    path.LineTo({rect.Right(), rect.top});
    path.LineTo({rect.Right(), rect.Bottom()});
    path.LineTo({rect.left, rect.Bottom()});
    path.Close();
}

}  // namespace utils
}  // namespace zelui
