#pragma once

#include <zelui/UI_TextButton.h>

#include "ButtonPeer.h"

namespace zelui {
namespace controls {

/// The Qt side of a push button.
class UI_TextButton::TextButtonPeer final : public ButtonPeer {
public:
    explicit TextButtonPeer(UI_TextButton& button);

private:
    QWidget* MakeControl(QWidget& parent) override;
    int GetTextWidth() const override;
    void OnSync() override;
    bool UsesKey(const QKeyEvent& key) const override;
    bool OnEvent(QEvent& event) override;
    void OnClicked();
};

}  // namespace controls
}  // namespace zelui
