#pragma once

#include <zelui/OS_Window.h>

namespace zelui {
namespace ui {

/// A sub-view over a child window of the platform: what is added to its platform view container is drawn by others,
/// while the adapter itself is laid out, shown and disabled like any node.
///
/// It does not give the container its own size by itself: whoever derives from it decides on which changes
/// (UI_NodeChanged) that is done.
class ZELUI_API UI_OSSubViewAdapter : public UI_SubView {
public:
    UI_OSSubViewAdapter();

    /// The platform view container: a child window at the adapter's place. Null after ReleaseOSViewContainer.
    OS_Window* GetOSViewContainer() const { return mContainer.get(); }
    /// The window that content goes into: the first one that was added to the container, or the container itself.
    /// Null without a container.
    OS_Window* GetOSView() const;

protected:
    ~UI_OSSubViewAdapter() override;

    /// Takes the container away, with all that is in it.
    void ReleaseOSViewContainer();

    void UI_NodeChanged(int change) override;

private:
    boost::intrusive_ptr<OS_Window> mContainer;
};

}  // namespace ui
}  // namespace zelui
