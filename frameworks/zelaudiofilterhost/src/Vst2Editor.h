#pragma once

#include <cstdint>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilterEditor.h>

#include "Vst2Abi.h"

namespace zelaudiofilterhost {

class Vst2AudioFilter;

/// The editor of a VST2 effect.
///
/// Its size comes in two ways that contradict each other in practice: the rectangle that the effect answers when it is
/// asked, and the window size that it asks for. The newer of the two counts: an answer is news when it differs from the
/// one before. Answers are looked at in each turn (Idle), because effects change them without a word.
///
/// Effects that ask for another size whenever they hear of one keep nobody busy: a change is told from the main loop,
/// never from within a call, and at most once between two turns.
class Vst2Editor final : public AudioFilterEditor {
public:
    explicit Vst2Editor(Vst2AudioFilter& filter);

    zelcore::geom::Rect GetViewRect() override;
    /// What an effect returns for opening says little: some that opened return 0. That counts as a failure only
    /// together with a rectangle that is empty even then, which leaves nothing to show.
    bool OpenView(HWND parent) override;
    void CloseView() override;
    void Idle() override;
    bool UsesPlatformView() override { return true; }
    /// The format has no way to say it.
    void SetThemeBrightness(float, bool) override {}
    bool DispatchKeyboardFocus(bool forward) override;
    bool DispatchCurrentFocus() override;
    /// The format has no way to say it; what changes is the size in display units.
    void SetContentScale(float scale) override;
    bool DoKey(int osCode, int modifiers, unsigned short character, bool down) override;

protected:
    ~Vst2Editor() override;

private:
    /// Abandoned: closed in the middle of being opened, of which the effect has to return first.
    enum State { kClosed, kOpening, kAbandoned, kOpen, kClosing };

    bool IsShown() const { return mState == kOpening || mState == kOpen; }
    /// Throws PluginLoadError when the effect throws.
    std::intptr_t Dispatch(vst2::EffectOperation operation, void* pointer = nullptr) const;
    bool PassKey(int osCode, int modifiers, unsigned short character, bool down) const;
    bool OpenEffect(HWND parent);
    void Close() noexcept;
    void Detach() noexcept;
    zelcore::geom::Rect AskRect() const;
    zelcore::geom::Point GetWantedSize() const;
    void ForgetSize();
    void UpdateSize();
    void AnnounceSize();
    void TellSize();

    const boost::intrusive_ptr<Vst2AudioFilter> mFilter;
    State mState;
    bool mIsAttached;  ///< the effect was told to open it
    bool mIsIdling;
    bool mIsTelling;
    zelcore::geom::Rect mAnswered;  ///< what the effect answered last
    zelcore::geom::Rect mWanted;
    zelcore::geom::Point mToldSize;  ///< width and height that everybody knows, in display units
};

}  // namespace zelaudiofilterhost
