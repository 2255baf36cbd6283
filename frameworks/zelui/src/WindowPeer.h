#pragma once

#include "SubViewPeer.h"

namespace zelui {

/// The Qt side of a node with a window of its own.
class WindowPeer final : public SubViewPeer {
public:
    explicit WindowPeer(ui::UI_Node& node);

    /// What others have put into the window would be lost with it.
    bool CanBeReleased() const override { return false; }

protected:
    QWidget* MakeWidget(QWidget& parent) override;
};

}  // namespace zelui
