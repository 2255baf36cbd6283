#include <zelui/OS_Dialog.h>

#include "OS_DialogWindowSide.h"

namespace zelui {
namespace ui {

OS_Dialog::OS_Dialog(UI_Dialog& dialog, WindowSide& window) : mDialog(dialog), mWindow(window) {
    mWindow.SetDialog(this);
}

OS_Dialog::~OS_Dialog() { mWindow.SetDialog(nullptr); }

UI_Dialog::Response OS_Dialog::RunModal() { return mDialog.UI_RunModal(); }

void OS_Dialog::SetMinimumSize(const zelcore::geom::PointF& size) { mWindow.SetMinimumSize(size); }

zelcore::geom::Rect OS_Dialog::GetGlobalStructureRect() const { return mWindow.GetStructureRect(); }

void OS_Dialog::SetGlobalStructureRect(const zelcore::geom::Rect& rect) { mWindow.SetStructureRect(rect); }

HWND OS_Dialog::GetPlatformWindow(bool) const { return mDialog.UI_GetPlatformWindow(); }

bool OS_Dialog::UI_DoPreKeyboardEvent(const KeyboardEvent&) { return false; }

void OS_Dialog::UI_SizeChanged(const zelcore::geom::RectF&) {}

}  // namespace ui
}  // namespace zelui
