#include "QtSupplier.h"

#include <cstdint>

#include "Fonts.h"
#include "HighContrast.h"
#include "ImageDrawbot.h"
#include "QtApplication.h"
#include "QtFont.h"
#include "QtPath.h"

namespace zelui {
namespace drawbot {

namespace {

const float kLargestFont = 1000.0f;
const std::int64_t kMostPixels = 64'000'000;

// The size in pixels; empty when it is refused.
QSize FindPixels(int width, int height, int scale) {
    if (width <= 0 || height <= 0 || scale <= 0) return QSize();
    const std::int64_t across = std::int64_t{width} * scale;
    const std::int64_t down = std::int64_t{height} * scale;
    if (across > kMostPixels || down > kMostPixels || across * down > kMostPixels) return QSize();
    return QSize(static_cast<int>(across), static_cast<int>(down));
}

}  // namespace

boost::intrusive_ptr<Font> QtSupplier::NewFont(const zelcore::ustring& name, int style, float size) const {
    if (!HasQtApplication() || !(size > 0.0f && size <= kLargestFont)) return nullptr;
    return new QtFont(MakeFont(name, style, size));
}

boost::intrusive_ptr<Path> QtSupplier::NewPath() const { return new QtPath(); }

boost::intrusive_ptr<Drawbot> QtSupplier::NewDrawbot(int width, int height, int scale) const {
    const QSize pixels = FindPixels(width, height, scale);
    if (pixels.isEmpty()) return nullptr;
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return nullptr;
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(scale);
    return new ImageDrawbot(image);
}

bool QtSupplier::WantsHighContrast() const { return SystemWantsHighContrast(); }

}  // namespace drawbot
}  // namespace zelui
