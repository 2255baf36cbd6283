#pragma once

#include <zelcore/PlatformHandles.h>
#include <zelcore/ustring.h>

#include <zelui/SupplierInterface.h>

namespace zelui {
namespace dialogs {
namespace messagebox {

/// Modal boxes with one OK button over the window `parent` (null: over the application); they return when the user has
/// dismissed them. `supplier` as in every dialog. Main thread.
ZELUI_API void ShowNote(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
                        const zelcore::ustring& message, HWND parent);
ZELUI_API void ShowCaution(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
                           const zelcore::ustring& message, HWND parent);

}  // namespace messagebox
}  // namespace dialogs
}  // namespace zelui
