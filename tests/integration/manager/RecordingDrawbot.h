#pragma once

#include <vector>

#include <zelui/Drawbot.h>

namespace zeltests {

/// A surface that writes down what is drawn on it.
class RecordingDrawbot : public zelui::drawbot::Drawbot {
public:
    typedef zelui::drawbot::ColorRGBA ColorRGBA;
    typedef zelcore::geom::RectF RectF;

    struct String {
        zelcore::ustring text;
        float width;  ///< in the font that it is drawn in
        zelcore::geom::PointF origin;
        ColorRGBA color;
        std::vector<RectF> clips;  ///< those in force
    };
    struct Stroke {
        ColorRGBA color;
        float width;
    };

    std::vector<String> strings;
    std::vector<Stroke> strokes;
    std::vector<RectF> clips;

    void FillRect(const RectF&, const ColorRGBA&) override {}
    void FillPath(const zelui::drawbot::Path&, const ColorRGBA&) override {}
    void StrokePath(const zelui::drawbot::Path&, const ColorRGBA& color, float width) override {
        strokes.push_back({color, width});
    }
    void DrawString(const zelcore::ustring& text, const zelui::drawbot::Font& font, const zelcore::geom::PointF& origin,
                    const ColorRGBA& color) override {
        strings.push_back({text, font.GetStringWidth(text), origin, color, clips});
    }
    void PushClip(const RectF& rect) override { clips.push_back(rect); }
    void PopClip() override { clips.pop_back(); }
};

}  // namespace zeltests
