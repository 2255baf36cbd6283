#include "QtDrawbot.h"

#include <algorithm>
#include <QPainterPathStroker>

#include "QtFont.h"
#include "QtGeometry.h"
#include "QtPath.h"

namespace zelui {
namespace drawbot {

namespace {

// More than is seen of any line.
const qsizetype kLongestLine = 10000;
const float kWidestStroke = 1.0e6f;

// Also for what is no number.
float BoundPart(float part) { return part > 0.0f ? std::min(part, 1.0f) : 0.0f; }

QColor ToQtColor(const ColorRGBA& color) {
    return QColor::fromRgbF(BoundPart(color.red), BoundPart(color.green), BoundPart(color.blue),
                            BoundPart(color.alpha));
}

}  // namespace

QtDrawbot::QtDrawbot(QPainter& painter, const QPointF& translation) : mPainter(&painter), mClips(0) {
    mPainter->save();
    mPainter->translate(translation);
}

QtDrawbot::~QtDrawbot() = default;

void QtDrawbot::Detach() {
    if (!mPainter) return;
    while (mClips > 0) PopClip();
    mPainter->restore();
    mPainter = nullptr;
}

void QtDrawbot::FillRect(const zelcore::geom::RectF& rect, const ColorRGBA& color) {
    const std::optional<QRectF> area = ToQtRect(rect);
    if (!mPainter || !area) return;
    // Edges fall on the nearest pixels at every scale, and those of neighbours on the same.
    mPainter->setRenderHint(QPainter::Antialiasing, false);
    mPainter->fillRect(*area, ToQtColor(color));
}

void QtDrawbot::FillPath(const Path& path, const ColorRGBA& color) {
    const QtPath* const own = dynamic_cast<const QtPath*>(&path);
    if (!mPainter || !own) return;
    mPainter->setRenderHint(QPainter::Antialiasing, true);
    mPainter->fillPath(own->GetPath(), ToQtColor(color));
}

void QtDrawbot::StrokePath(const Path& path, const ColorRGBA& color, float width) {
    const QtPath* const own = dynamic_cast<const QtPath*>(&path);
    if (!mPainter || !own || !(width > 0.0f)) return;
    // Filled as an outline of its own: Qt's quick way for thin lines draws each side by itself, which leaves pale
    // corners and doubles colours that let something through.
    QPainterPathStroker stroker;
    stroker.setWidth(std::min(width, kWidestStroke));
    stroker.setCapStyle(Qt::FlatCap);
    stroker.setJoinStyle(Qt::MiterJoin);
    mPainter->setRenderHint(QPainter::Antialiasing, true);
    mPainter->fillPath(stroker.createStroke(own->GetPath()), ToQtColor(color));
}

void QtDrawbot::DrawString(const zelcore::ustring& text, const Font& font, const zelcore::geom::PointF& origin,
                           const ColorRGBA& color) {
    const QtFont* const own = dynamic_cast<const QtFont*>(&font);
    const std::optional<QPointF> start = ToQtPoint(origin);
    if (!mPainter || !own || !start) return;
    const QString line = ToDrawnLine(text);
    mPainter->setFont(own->GetFont());
    mPainter->setPen(ToQtColor(color));
    mPainter->drawText(*start, line.left(line.isEmpty() ? 0 : FindCut(line, kLongestLine)));
}

void QtDrawbot::PushClip(const zelcore::geom::RectF& rect) {
    if (!mPainter) return;
    mPainter->save();
    ++mClips;
    mPainter->setRenderHint(QPainter::Antialiasing, false);
    mPainter->setClipRect(ToQtRect(rect).value_or(QRectF()), Qt::IntersectClip);
}

void QtDrawbot::PopClip() {
    if (!mPainter || mClips == 0) return;
    mPainter->restore();
    --mClips;
}

}  // namespace drawbot
}  // namespace zelui
