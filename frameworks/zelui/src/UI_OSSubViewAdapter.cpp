#include <zelui/UI_OSSubViewAdapter.h>

#include <zelui/OS_ViewContainer.h>

namespace zelui {
namespace ui {

UI_OSSubViewAdapter::UI_OSSubViewAdapter() : mContainer(new OS_ViewContainer(false)) {
    mContainer->UI_Show(true);
    ChildPushBack(mContainer);
}

UI_OSSubViewAdapter::~UI_OSSubViewAdapter() = default;

OS_Window* UI_OSSubViewAdapter::GetOSView() const {
    if (!mContainer) return nullptr;
    for (std::size_t i = 0; i < mContainer->ChildCount(); ++i) {
        if (OS_Window* const window = dynamic_cast<OS_Window*>(mContainer->ChildAt(i).get())) return window;
    }
    return mContainer.get();
}

void UI_OSSubViewAdapter::ReleaseOSViewContainer() {
    if (mContainer) ChildRemove(mContainer);
    mContainer.reset();
}

void UI_OSSubViewAdapter::UI_NodeChanged(int change) { UI_SubView::UI_NodeChanged(change); }

}  // namespace ui
}  // namespace zelui
