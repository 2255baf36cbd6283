#include <zelui/OS_ViewContainer.h>

namespace zelui {
namespace ui {

OS_ViewContainer::OS_ViewContainer(bool takesFocus) : mTakesFocus(takesFocus) {}

OS_ViewContainer::~OS_ViewContainer() = default;

bool OS_ViewContainer::UI_WantsKeyboardFocus() const { return mTakesFocus; }

}  // namespace ui
}  // namespace zelui
