#pragma once

#include <memory>

#include "SubViewPeer.h"

namespace zelui {

/// The Qt side of a node with a window of its own.
class WindowPeer final : public SubViewPeer {
public:
    explicit WindowPeer(ui::UI_Node& node);
    ~WindowPeer() override;

    /// Somebody has the window's handle: from now on the node hears of the window's end before it comes. Qt destroys
    /// the platform windows of a window that is closed and keeps the widgets.
    void WatchWindow();
    /// What others have put into the window would be lost with it.
    bool CanBeReleased() const override { return false; }

protected:
    QWidget* MakeWidget(QWidget& parent) override;

private:
    class Watch;

    std::unique_ptr<Watch> mWatch;
};

}  // namespace zelui
