#include <zelui/UI_DragDropHandler.h>

namespace zelui {
namespace ui {

UI_DragDropHandler::~UI_DragDropHandler() = default;

bool UI_DragDropHandler::UI_AcceptsDrop() const { return false; }

}  // namespace ui
}  // namespace zelui
