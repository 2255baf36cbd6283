#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelui/OS_ViewContainer.h>
#include <zelui/UI_OSSubViewAdapter.h>

#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// A platform window for a host that drives a plug-in's editor itself: it has the view's size; opening and closing
/// something in it is the host's. Main thread only.
class ZELAUDIOFILTERHOSTUI_API AudioFilterHostView : public zelui::ui::UI_OSSubViewAdapter {
public:
    AudioFilterHostView();

    /// The window to give to a plug-in's editor as its parent; null while the view stands in no window on a display. It
    /// goes when the view leaves its window, and when that window is closed: what is open in it must be closed by then.
    HWND GetContentPlatformView() const;
    /// Sets the frame of that window within the view, in display units, until the view's size changes the next time:
    /// then the window takes the frame of the view, its left and top included. A view that does not stand at 0, 0 sets
    /// it again after that.
    void SetContentRect(const zelcore::geom::Rect& rect);

    /// Draws nothing, on purpose: all that is seen is the content's.
    void UI_Draw(zelui::drawbot::Drawbot& drawbot) override;

protected:
    ~AudioFilterHostView() override;

    void UI_SizeChanged(const zelcore::geom::RectF& frame) override;
    void UI_DisabledStateChanged() override;
    void UI_NodeChanged(int change) override;

private:
    void UpdateSize(const zelcore::geom::RectF& frame);

    boost::intrusive_ptr<zelui::ui::OS_ViewContainer> mContentWindow;
};

}  // namespace zelaudiofilterhostui
