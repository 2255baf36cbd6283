#pragma once

#include <zelui/UI_Checkbox.h>

#include "ButtonPeer.h"

namespace zelui {
namespace controls {

/// The Qt side of a check box.
class UI_Checkbox::CheckboxPeer final : public ButtonPeer {
public:
    explicit CheckboxPeer(UI_Checkbox& checkbox);

private:
    QWidget* MakeControl(QWidget& parent) override;
    void OnSync() override;
    int GetTextWidth() const override;
    void OnToggled(bool checked);
};

}  // namespace controls
}  // namespace zelui
