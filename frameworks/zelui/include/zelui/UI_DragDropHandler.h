#pragma once

#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// What may be dropped upon. Nothing may, unless a view says otherwise.
class ZELUI_API UI_DragDropHandler {
public:
    /// Whether the view takes what is being dragged.
    virtual bool UI_AcceptsDrop() const;

protected:
    virtual ~UI_DragDropHandler();
};

}  // namespace ui
}  // namespace zelui
