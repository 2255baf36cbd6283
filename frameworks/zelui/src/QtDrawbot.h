#pragma once

#include <QPainter>
#include <QPointF>

#include <zelui/Drawbot.h>

namespace zelui {
namespace drawbot {

/// A drawbot on a painter that somebody else owns. Exported for the tests alone.
class ZELUI_API QtDrawbot : public Drawbot {
public:
    /// `translation` is added to all coordinates: minus the left top corner of a node's frame where the painter's
    /// origin is that corner. `painter` must be active; the drawbot uses it until Detach.
    QtDrawbot(QPainter& painter, const QPointF& translation);

    /// Leaves the painter as it was found, clips included; from then on nothing is drawn. Whoever made the drawbot
    /// calls this before the painter ends. A second call is harmless.
    void Detach();

    void FillRect(const zelcore::geom::RectF& rect, const ColorRGBA& color) override;
    void FillPath(const Path& path, const ColorRGBA& color) override;
    void StrokePath(const Path& path, const ColorRGBA& color, float width) override;
    void DrawString(const zelcore::ustring& text, const Font& font, const zelcore::geom::PointF& origin,
                    const ColorRGBA& color) override;
    void PushClip(const zelcore::geom::RectF& rect) override;
    void PopClip() override;

protected:
    ~QtDrawbot() override;

private:
    QPainter* mPainter;
    int mClips;
};

/// A drawbot for the time of one call of UI_Draw, or of a cell's drawing: who keeps it beyond that draws nothing, also
/// when the call ends by an exception.
class PainterDrawbot {
public:
    explicit PainterDrawbot(QPainter& painter, const QPointF& translation = QPointF())
        : mDrawbot(new QtDrawbot(painter, translation)) {}
    ~PainterDrawbot() { mDrawbot->Detach(); }
    PainterDrawbot(const PainterDrawbot&) = delete;
    PainterDrawbot& operator=(const PainterDrawbot&) = delete;

    Drawbot& Get() const { return *mDrawbot; }

private:
    boost::intrusive_ptr<QtDrawbot> mDrawbot;
};

}  // namespace drawbot
}  // namespace zelui
