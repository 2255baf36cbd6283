#pragma once

#include <optional>

#include <boost/intrusive_ptr.hpp>
#include <pluginterfaces/gui/iplugview.h>
#include <zelaudiofilterhost/AudioFilterEditor.h>

#include "Vst3PlugFrame.h"
#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

class Vst3AudioFilter;

/// The editor of a VST3 effect: a view that is made for each opening, attached to the parent window, and gone when the
/// editor is closed.
///
/// A size that the view asks for is given to it at once, in the same call, and told to the host afterwards, from the
/// main loop, once between two turns (Idle). A view that answers each size with another one is given a few and then the
/// last of them for good. What a view says its size is counts when it changes; that is looked at in each turn, because
/// some change it without a word.
class Vst3Editor final : public AudioFilterEditor {
public:
    /// `view` is the first one to be opened.
    Vst3Editor(Vst3AudioFilter& filter, Vst3Ptr<Steinberg::IPlugView> view);

    zelcore::geom::Rect GetViewRect() override;
    bool OpenView(HWND parent) override;
    void CloseView() override;
    void Idle() override;
    bool UsesPlatformView() override { return true; }
    /// The format has no way to say it.
    void SetThemeBrightness(float, bool) override {}
    bool DispatchKeyboardFocus(bool forward) override;
    bool DispatchCurrentFocus() override;
    void SetContentScale(float scale) override;
    bool DoKey(int osCode, int modifiers, unsigned short character, bool down) override;

    /// The view asks for a size. False when it does not get it.
    bool Resize(const Steinberg::ViewRect& size);

protected:
    ~Vst3Editor() override;

private:
    /// Abandoned: closed in the middle of being opened, of which the plug-in has to return first.
    enum State { kClosed, kOpening, kAbandoned, kOpen, kClosing };

    bool IsShown() const { return mState == kOpening || mState == kOpen; }
    bool EnsureView();
    void BeginOpening();
    bool Attach(HWND parent);
    void Close() noexcept;
    void Detach() noexcept;
    void ApplyScale();
    bool TakeFocus();
    bool PassKey(int osCode, int modifiers, unsigned short character, bool down) const;
    zelcore::geom::Rect AskRect() const;
    zelcore::geom::Point GetWantedSize() const;
    void ForgetSize();
    void UpdateSize();
    void GiveSizes();
    void TakeSizeFromElsewhere();
    void AnnounceSize();
    void TellSize();

    const boost::intrusive_ptr<Vst3AudioFilter> mFilter;
    Vst3Ptr<Steinberg::IPlugView> mView;
    Vst3Ptr<Vst3PlugFrame> mFrame;  ///< while not closed
    State mState = kClosed;
    bool mIsAttached = false;
    bool mHasFocus = false;
    bool mIsGivingSizes = false;
    bool mIsTelling = false;
    float mScale = 0.0f;                            ///< 0 as long as nobody has said it
    std::optional<Steinberg::ViewRect> mAskedSize;  ///< what the view is to be given next
    zelcore::geom::Rect mAnswered;                  ///< what the view said last
    zelcore::geom::Rect mWanted;
    zelcore::geom::Point mToldSize;  ///< width and height that everybody knows, in display units
};

}  // namespace zelaudiofilterhost
