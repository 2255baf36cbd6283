#include <zelaudiofilterhostui/AudioFilterHostView.h>

#include "views/PlatformViewSize.h"

namespace zelaudiofilterhostui {

using zelui::ui::OS_ViewContainer;
using zelui::ui::UI_OSSubViewAdapter;

AudioFilterHostView::AudioFilterHostView() {
    const boost::intrusive_ptr<OS_ViewContainer> frame(new OS_ViewContainer(false));
    frame->UI_Show(true);
    mContentWindow = new OS_ViewContainer(false);
    mContentWindow->UI_Show(true);
    frame->ChildPushBack(mContentWindow);
    GetOSViewContainer()->ChildPushBack(frame);
}

AudioFilterHostView::~AudioFilterHostView() = default;

HWND AudioFilterHostView::GetContentPlatformView() const { return mContentWindow->GetPlatformWindow(false); }

void AudioFilterHostView::SetContentRect(const zelcore::geom::Rect& rect) { mContentWindow->UI_SetLocalRect(rect); }

void AudioFilterHostView::UI_Draw(zelui::drawbot::Drawbot&) {}

void AudioFilterHostView::UI_SizeChanged(const zelcore::geom::RectF& frame) {
    UI_OSSubViewAdapter::UI_SizeChanged(frame);
    UpdateSize(frame);
}

void AudioFilterHostView::UpdateSize(const zelcore::geom::RectF& frame) { mContentWindow->UI_SetLocalRectF(frame); }

void AudioFilterHostView::UI_DisabledStateChanged() {
    UI_OSSubViewAdapter::UI_DisabledStateChanged();
    RepaintNow(*this);
}

void AudioFilterHostView::UI_NodeChanged(int change) {
    UI_OSSubViewAdapter::UI_NodeChanged(change);
    SyncPlatformViewSize(*this, change);
}

}  // namespace zelaudiofilterhostui
