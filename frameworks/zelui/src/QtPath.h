#pragma once

#include <QPainterPath>

#include <zelui/Drawbot.h>

namespace zelui {
namespace drawbot {

/// A path of the screen's supplier. Points that are no numbers are left out; a line without a beginning begins at its
/// own end.
class QtPath final : public Path {
public:
    void MoveTo(const zelcore::geom::PointF& point) override;
    void LineTo(const zelcore::geom::PointF& point) override;
    void Close() override;
    void AddRect(const zelcore::geom::RectF& rect) override;

    const QPainterPath& GetPath() const { return mPath; }

private:
    QPainterPath mPath;
};

}  // namespace drawbot
}  // namespace zelui
