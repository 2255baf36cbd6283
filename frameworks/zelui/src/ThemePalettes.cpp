#include "ThemePalettes.h"

#include <QColor>

namespace zelui {
namespace ui {

namespace {

struct RoleColors {
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};

const RoleColors kColors[] = {
    {QPalette::Window, 0xFFEFF0F2, 0xFF2B2D30},
    {QPalette::WindowText, 0xFF1B1D20, 0xFFE6E7E9},
    {QPalette::Base, 0xFFFFFFFF, 0xFF1F2123},
    {QPalette::AlternateBase, 0xFFF5F6F8, 0xFF26282B},
    {QPalette::Text, 0xFF1B1D20, 0xFFE6E7E9},
    {QPalette::PlaceholderText, 0xFF666A71, 0xFF9CA1A8},
    {QPalette::Button, 0xFFE4E6E9, 0xFF3A3D41},
    {QPalette::ButtonText, 0xFF1B1D20, 0xFFF0F1F2},
    {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Highlight, 0xFF1F66C1, 0xFF2F6CC9},
    {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Link, 0xFF0B57B0, 0xFF7FB2FF},
    {QPalette::LinkVisited, 0xFF6B3FA0, 0xFFC0A3F5},
    {QPalette::ToolTipBase, 0xFFFCFCFD, 0xFF3F4247},
    {QPalette::ToolTipText, 0xFF1B1D20, 0xFFF0F1F2},
    {QPalette::Light, 0xFFFFFFFF, 0xFF5A5E64},
    {QPalette::Midlight, 0xFFF7F8F9, 0xFF484B50},
    {QPalette::Mid, 0xFFB4B8BE, 0xFF55595F},
    {QPalette::Dark, 0xFF70757D, 0xFF17181A},
    {QPalette::Shadow, 0xFF4A4E55, 0xFF0C0D0E},
};

// What differs where a control is disabled.
const RoleColors kDisabledColors[] = {
    {QPalette::WindowText, 0xFF7C8088, 0xFF8C9097}, {QPalette::Text, 0xFF7C8088, 0xFF8C9097},
    {QPalette::ButtonText, 0xFF7C8088, 0xFF8C9097}, {QPalette::PlaceholderText, 0xFF7C8088, 0xFF8C9097},
    {QPalette::Highlight, 0xFFB9BEC6, 0xFF44484E},  {QPalette::HighlightedText, 0xFF55595F, 0xFFA4A8AE},
    {QPalette::Link, 0xFF7C8088, 0xFF8C9097},       {QPalette::LinkVisited, 0xFF7C8088, 0xFF8C9097},
    {QPalette::Base, 0xFFF7F7F9, 0xFF27292C},
};

}  // namespace

QPalette MakeThemePalette(bool dark) {
    QPalette palette;
    for (const RoleColors& colors : kColors) palette.setColor(colors.role, QColor(dark ? colors.dark : colors.light));
    for (const RoleColors& colors : kDisabledColors)
        palette.setColor(QPalette::Disabled, colors.role, QColor(dark ? colors.dark : colors.light));
    return palette;
}

}  // namespace ui
}  // namespace zelui
