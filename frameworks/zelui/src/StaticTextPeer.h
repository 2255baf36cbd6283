#pragma once

#include <zelui/UI_StaticText.h>

#include "ControlPeer.h"

namespace zelui {
namespace controls {

/// The Qt side of a static text: a label that is given what fits.
class StaticTextPeer final : public ControlPeer {
public:
    explicit StaticTextPeer(UI_StaticText& text);

private:
    QWidget* MakeControl(QWidget& parent) override;
    void OnSync() override;
    QString GetOwnAccessibleName() const override;
    QString GetOwnToolTip() const override;

    const UI_StaticText& GetText() const;
};

}  // namespace controls
}  // namespace zelui
