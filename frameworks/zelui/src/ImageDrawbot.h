#pragma once

#include <QImage>
#include <QPainter>

#include "QtDrawbot.h"

namespace zelui {
namespace drawbot {

/// What an ImageDrawbot draws on; its base, because a drawbot needs its painter from the beginning.
struct ImageSurface {
    explicit ImageSurface(const QImage& blank) : image(blank), painter(&image) {}

    QImage image;
    QPainter painter;
};

/// A drawbot on an image of its own. Exported for the tests alone.
class ZELUI_API ImageDrawbot final : private ImageSurface, public QtDrawbot {
public:
    /// Draws on a copy of `blank`, whose device pixel ratio is the scale.
    explicit ImageDrawbot(const QImage& blank);

    /// What has been drawn so far.
    QImage GetImage() const;

private:
    ~ImageDrawbot() override;
};

}  // namespace drawbot
}  // namespace zelui
