#include <zelaudiofilterhostui/AudioFilterEditorView.h>

#include <utility>

#include <boost/bind/bind.hpp>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>

#include "views/PluginEmbedView.h"

namespace zelaudiofilterhostui {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterEditor;
using zelcore::geom::RectF;

namespace {

/// Sets a flag for as long as it lives.
class Guard {
public:
    explicit Guard(bool& flag) : mFlag(flag) { mFlag = true; }
    ~Guard() { mFlag = false; }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

private:
    bool& mFlag;
};

/// An OpenEditor that is under way. Whatever opens or closes the same view meanwhile has the last word. Main thread.
class Opening {
public:
    explicit Opening(const AudioFilterEditorView& view)
        : mView(view), mOuter(std::exchange(GetInnermost(), this)), mIsWanted(true) {}
    ~Opening() { GetInnermost() = mOuter; }
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;

    /// Ends all those of a view.
    static void Abandon(const AudioFilterEditorView& view) {
        for (Opening* opening = GetInnermost(); opening != nullptr; opening = opening->mOuter) {
            if (&opening->mView == &view) opening->mIsWanted = false;
        }
    }
    /// Whether the view's innermost one, which is the one that asks, is to go on.
    static bool IsWanted(const AudioFilterEditorView& view) {
        const Opening* opening = GetInnermost();
        while (opening != nullptr && &opening->mView != &view) opening = opening->mOuter;
        return opening != nullptr && opening->mIsWanted;
    }

private:
    static Opening*& GetInnermost() {
        static Opening* innermost = nullptr;
        return innermost;
    }

    const AudioFilterEditorView& mView;
    Opening* const mOuter;
    bool mIsWanted;
};

}  // namespace

AudioFilterEditorView::AudioFilterEditorView(const boost::intrusive_ptr<AudioFilter>& filter)
    : AudioFilterEditorViewBase(filter),
      mInSizeChange(false),
      mCanResize(false),
      mCanScroll(false),
      mDispatchesFocus(false) {}

AudioFilterEditorView::~AudioFilterEditorView() = default;

// Opening and closing

// Code of plug-ins and hosts runs in all of these, and may let go of the view.

void AudioFilterEditorView::OpenEditor() {
    const boost::intrusive_ptr<AudioFilterEditorView> self(this);
    Opening::Abandon(*this);
    const Opening opening(*this);
    const bool hasEditor = GetAudioFilter()->HasEditor();
    if (!Opening::IsWanted(*this)) return;
    if (hasEditor)
        OpenPluginEditor();
    else
        OpenGenericEditor();
    if (Opening::IsWanted(*this)) SyncEditorViewBounds();
}

void AudioFilterEditorView::OpenPluginEditor() {
    const boost::intrusive_ptr<AudioFilterEditor> editor = GetAudioFilter()->GetEditor();
    if (!editor || !Opening::IsWanted(*this)) return;
    // Closed while it opened it stays closed.
    if (editor->UsesPlatformView() && !EmbedEditor(editor)) return;
    mContentSizeConnection = editor->GetContentSizeChangedSignal().connect(
        boost::bind(&AudioFilterEditorView::OnEditorViewSizeChanged, this));
}

bool AudioFilterEditorView::EmbedEditor(const boost::intrusive_ptr<AudioFilterEditor>& editor) {
    // Opened again without having been closed: the editor is open in one place only.
    mContentSizeConnection.disconnect();
    RemoveContent();
    if (!Opening::IsWanted(*this)) return false;
    const boost::intrusive_ptr<PluginEmbedView> embedView(new PluginEmbedView(GetAudioFilter(), editor));
    ChildPushBack(embedView);
    // Before it opens: plug-ins run the event loop while they do, and whoever closes the view there closes this.
    mContentView = embedView;
    try {
        embedView->AttachEditor();
    } catch (...) {
        if (mContentView == embedView) RemoveContent();
        throw;
    }
    if (!Opening::IsWanted(*this) || mContentView != embedView) return false;
    mEditor = editor;
    mAdvanceFocusConnection = editor->GetAdvanceFocusSignal().connect(
        boost::bind(&AudioFilterEditorView::OnAdvanceFocus, this, boost::placeholders::_1));
    mCanScroll = false;
    mDispatchesFocus = true;
    return true;
}

void AudioFilterEditorView::OpenGenericEditor() {
    if (!mContentView) {
        const boost::intrusive_ptr<zelui::ui::UI_SubView> content =
            GenericAudioFilterEditorView::Create(GetAudioFilter());
        if (!Opening::IsWanted(*this)) return;
        mContentView = content;
        mCanScroll = true;
    }
    if (mContentView->UI_GetParentNode() == nullptr) ChildPushBack(mContentView);
}

void AudioFilterEditorView::CloseEditor() {
    const boost::intrusive_ptr<AudioFilterEditorView> self(this);
    Opening::Abandon(*this);
    mContentSizeConnection.disconnect();
    const boost::intrusive_ptr<zelui::ui::UI_SubView> content = mContentView;
    // What was opened in the middle of the question is not what was to be closed.
    if (GetAudioFilter()->HasEditor() && mContentView == content) RemoveContent();
}

void AudioFilterEditorView::RemoveContent() {
    const boost::intrusive_ptr<zelui::ui::UI_SubView> content = mContentView;
    mContentView.reset();
    if (!content) return;
    // Somebody else may hold the view for a while yet; the window that the editor is in goes now.
    if (PluginEmbedView* const embedView = dynamic_cast<PluginEmbedView*>(content.get())) embedView->DetachEditor();
    if (content->UI_GetParentNode() == this) ChildRemove(content);
}

// Size

void AudioFilterEditorView::SyncEditorViewBounds() {
    const boost::intrusive_ptr<zelui::ui::UI_SubView> content = mContentView;
    if (!content) return;
    content->UI_Show(true);
    if (mContentView != content) return;
    RectF rect = UI_GetLocalRectF(false);
    const RectF contentRect = content->UI_GetLocalRectF(false);
    rect.width = contentRect.width;
    rect.height = contentRect.height;
    UI_SetLocalRectF(rect);
    if (mContentView == content) mLastContentRect = content->UI_GetLocalRectF(true);
}

void AudioFilterEditorView::OnEditorViewSizeChanged() {
    // An editor that draws into no platform window has no place here whose size could change.
    const boost::intrusive_ptr<zelui::ui::UI_SubView> content = mContentView;
    if (mInSizeChange || !content) return;
    const boost::intrusive_ptr<AudioFilterEditorView> self(this);
    const Guard guard(mInSizeChange);
    if (PluginEmbedView* const embedView = dynamic_cast<PluginEmbedView*>(content.get()))
        embedView->SyncSizeFromEditor();
    if (mContentView != content) return;
    const RectF contentRect = content->UI_GetLocalRectF(false);
    const float widthChange = contentRect.width - mLastContentRect.width;
    const float heightChange = contentRect.height - mLastContentRect.height;
    if (widthChange == 0.0f && heightChange == 0.0f) return;
    RectF rect = UI_GetLocalRectF(true);
    rect.width = contentRect.width;
    rect.height = contentRect.height;
    UI_SetLocalRectF(rect);
    if (mContentView != content) return;
    mLastContentRect = content->UI_GetLocalRectF(true);
    // With the guard still set: a host that resizes the editor in answer to this would never come to an end.
    GetContentSizeChangedSignal()();
}

// Keyboard

bool AudioFilterEditorView::DispatchKeyboardFocus(bool forward) {
    return mEditor && mEditor->DispatchKeyboardFocus(forward);
}

bool AudioFilterEditorView::WantsToDispatchKeyboardFocus() { return mDispatchesFocus; }

bool AudioFilterEditorView::DispatchCurrentFocus() { return mEditor && mEditor->DispatchCurrentFocus(); }

bool AudioFilterEditorView::CanScrollContent() const { return mCanScroll; }

bool AudioFilterEditorView::CanResizeContent() const { return mCanResize; }

bool AudioFilterEditorView::UI_WantsKeyboardFocus() const { return mEditor != nullptr; }

bool AudioFilterEditorView::UI_WantsKeyboardFocusFromAdvance() const { return mEditor != nullptr; }

bool AudioFilterEditorView::UI_GainKeyboardFocus(zelui::ui::FocusChangeReason reason) {
    return reason != zelui::ui::kFocusLeftOver && AudioFilterEditorViewBase::UI_GainKeyboardFocus(reason);
}

bool AudioFilterEditorView::UI_DoKeyboardEvent(const zelui::ui::KeyboardEvent& event) {
    // One character or none: half of one would be another one.
    const zelcore::ustring& text = event.GetText();
    return mEditor && mEditor->DoKey(event.GetOSCode(), event.GetModifiers(), text.size() == 1 ? text.front() : 0,
                                     event.GetKind() == zelui::ui::KeyboardEvent::kKeyDown);
}

void AudioFilterEditorView::OnAdvanceFocus(bool forward) {
    const boost::intrusive_ptr<AudioFilterEditorView> self(this);
    GetAdvanceFocusSignal()(forward);
}

}  // namespace zelaudiofilterhostui
