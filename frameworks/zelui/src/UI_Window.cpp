#include <zelui/UI_Window.h>

namespace zelui {
namespace ui {

UI_Window::~UI_Window() = default;

}  // namespace ui
}  // namespace zelui
