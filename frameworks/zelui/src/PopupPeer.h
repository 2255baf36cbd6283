#pragma once

#include <zelui/UI_Popup.h>

#include "ControlPeer.h"
#include "PopupWidget.h"

namespace zelui {
namespace controls {

/// The Qt side of a popup.
class UI_Popup::PopupPeer final : public ControlPeer {
public:
    explicit PopupPeer(UI_Popup& popup);
    ~PopupPeer() override;

    bool CanBeReleased() const override;

private:
    QWidget* MakeControl(QWidget& parent) override;
    void OnSync() override;
    QString GetOwnToolTip() const override;
    bool UsesKey(const QKeyEvent& key) const override;
    bool OnEvent(QEvent& event) override;
    void OnActivated(int index);

    UI_Popup& GetPopup() const { return static_cast<UI_Popup&>(GetNode()); }
    PopupWidget& GetPopupWidget() const { return static_cast<PopupWidget&>(*GetWidget()); }
};

}  // namespace controls
}  // namespace zelui
