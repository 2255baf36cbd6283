#include <QApplication>
#include <QColor>
#include <QFont>
#include <QPalette>

#include <zelui/QtBridge.h>
#include <zelui/Theme.h>

#include "ColorContrast.h"
#include "QtApplication.h"
#include "ThemeWatch.h"

namespace zelui {
namespace ui {

namespace {

drawbot::ColorRGBA ToColorRGBA(const QColor& color) {
    return {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

// How light a colour looks, near enough to tell dark from light.
float GetLightness(const QColor& color) {
    return 0.2126f * color.redF() + 0.7152f * color.greenF() + 0.0722f * color.blueF();
}

// Systems mean different things by the roles for edges; some are the background itself.
QColor FindFrameColor(const QPalette& palette) {
    const double kVisible = 1.5;
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    for (const QPalette::ColorRole role : {QPalette::Mid, QPalette::Dark, QPalette::Light}) {
        const QColor color = palette.color(QPalette::Active, role);
        if (color.alpha() == 255 && GetContrast(color, window) >= kVisible) return color;
    }
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    for (const float part : {0.3f, 0.5f, 0.7f}) {
        if (GetContrast(Mix(window, text, part), window) >= kVisible) return Mix(window, text, part);
    }
    return text;
}

}  // namespace

Theme::Theme() = default;

Theme& Theme::Get() {
    static Theme theme;
    return theme;
}

float Theme::GetBrightness() const {
    if (!HasQtApplication()) return 1.0f;
    return GetLightness(QApplication::palette().color(QPalette::Active, QPalette::Window));
}

void Theme::Choose(Choice choice) {
    if (ThemeWatch* const watch = ThemeWatch::Get()) watch->Choose(choice);
}

Theme::Choice Theme::GetChoice() const {
    const ThemeWatch* const watch = ThemeWatch::Get();
    return watch ? watch->GetChoice() : kSystem;
}

void ThemeClient::UI_ThemeChanged() {}

ThemeClient::~ThemeClient() = default;

ThemeOwner::~ThemeOwner() = default;

zelcore::ustring GetFontName(int) {
    return HasQtApplication() ? qt::FromQString(QApplication::font().family()) : zelcore::ustring();
}

drawbot::ColorRGBA GetColor(int number) {
    if (!HasQtApplication()) return drawbot::ColorRGBA();
    const QPalette palette = QApplication::palette();
    switch (number) {
        case kColorListTextHighlighted:
            return ToColorRGBA(palette.color(QPalette::Active, QPalette::HighlightedText));
        case kColorFrame:
            return ToColorRGBA(FindFrameColor(palette));
        default:
            return ToColorRGBA(palette.color(QPalette::Active, QPalette::Text));
    }
}

}  // namespace ui
}  // namespace zelui
