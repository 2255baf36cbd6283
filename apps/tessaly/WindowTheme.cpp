#include "WindowTheme.h"

#include <zelui/Theme.h>

namespace tessaly {

void WindowTheme::Choose(CommandLine::Theme theme) {
    zelui::ui::Theme& colours = zelui::ui::Theme::Get();
    switch (theme) {
        case CommandLine::kLight:
            colours.Choose(zelui::ui::Theme::kLight);
            break;
        case CommandLine::kDark:
            colours.Choose(zelui::ui::Theme::kDark);
            break;
        case CommandLine::kSystem:
            break;
    }
}

}  // namespace tessaly
