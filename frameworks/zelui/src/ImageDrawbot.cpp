#include "ImageDrawbot.h"

namespace zelui {
namespace drawbot {

ImageDrawbot::ImageDrawbot(const QImage& blank) : ImageSurface(blank), QtDrawbot(painter, QPointF()) {}

ImageDrawbot::~ImageDrawbot() { Detach(); }

// Not a reference to the same pixels: the painter goes on writing there.
QImage ImageDrawbot::GetImage() const { return image.copy(); }

}  // namespace drawbot
}  // namespace zelui
