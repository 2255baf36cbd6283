#pragma once

#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// The outermost container of a dialog.
class ZELUI_API UI_DialogViewContainer {
public:
    /// How a dialog ended. Zero is cancelling or closing it, and stays zero: callers test for the number.
    enum Response { kResponseCancel = 0, kResponseOK = 1 };
};

}  // namespace ui
}  // namespace zelui
