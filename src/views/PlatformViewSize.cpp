#include "views/PlatformViewSize.h"

namespace zelaudiofilterhostui {

using zelcore::geom::RectF;

namespace {

bool MayChangeSize(int change) {
    return change == zelui::ui::kNodeFrameChanged || change == zelui::ui::kNodeShownChanged ||
           change == zelui::ui::kNodePlaceChanged;
}

}  // namespace

void SyncPlatformViewSize(const zelui::ui::UI_OSSubViewAdapter& view, int change) {
    zelui::ui::OS_Window* const container = view.GetOSViewContainer();
    if (!MayChangeSize(change) || container == nullptr) return;
    RectF containerRect = container->UI_GetLocalRectF(true);
    const RectF viewRect = view.UI_GetLocalRectF(false);
    if (containerRect.width == viewRect.width && containerRect.height == viewRect.height) return;
    containerRect.width = viewRect.width;
    containerRect.height = viewRect.height;
    container->UI_SetLocalRectF(containerRect);
}

void RepaintNow(zelui::ui::UI_Node& view) {
    view.UI_Invalidate(nullptr, 0);
    view.UI_UpdateNow(0xFFFFFFFF);
}

}  // namespace zelaudiofilterhostui
