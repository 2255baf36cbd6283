#include <zelaudiofilterhostui/AudioFilterEditorView.h>

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
    if (GetAudioFilter()->HasEditor())
        OpenPluginEditor();
    else
        OpenGenericEditor();
    SyncEditorViewBounds();
}

void AudioFilterEditorView::OpenPluginEditor() {
    const boost::intrusive_ptr<AudioFilterEditor> editor = GetAudioFilter()->GetEditor();
    if (!editor) return;
    // Closed while it opened it stays closed.
    if (editor->UsesPlatformView() && !EmbedEditor(editor)) return;
    mContentSizeConnection = editor->GetContentSizeChangedSignal().connect(
        boost::bind(&AudioFilterEditorView::OnEditorViewSizeChanged, this));
}

bool AudioFilterEditorView::EmbedEditor(const boost::intrusive_ptr<AudioFilterEditor>& editor) {
    // Opened again without having been closed: the editor is open in one place only.
    mContentSizeConnection.disconnect();
    RemoveContent();
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
    if (mContentView != embedView) return false;
    mEditor = editor;
    mAdvanceFocusConnection = editor->GetAdvanceFocusSignal().connect(
        boost::bind(&AudioFilterEditorView::OnAdvanceFocus, this, boost::placeholders::_1));
    mCanScroll = false;
    mDispatchesFocus = true;
    return true;
}

void AudioFilterEditorView::OpenGenericEditor() {
    if (!mContentView) {
        mContentView = GenericAudioFilterEditorView::Create(GetAudioFilter());
        mCanScroll = true;
    }
    if (mContentView->UI_GetParentNode() == nullptr) ChildPushBack(mContentView);
}

void AudioFilterEditorView::CloseEditor() {
    const boost::intrusive_ptr<AudioFilterEditorView> self(this);
    mContentSizeConnection.disconnect();
    if (GetAudioFilter()->HasEditor()) RemoveContent();
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
    if (!mContentView) return;
    mContentView->UI_Show(true);
    RectF rect = UI_GetLocalRectF(false);
    const RectF content = mContentView->UI_GetLocalRectF(false);
    rect.width = content.width;
    rect.height = content.height;
    UI_SetLocalRectF(rect);
    mLastContentRect = mContentView->UI_GetLocalRectF(true);
}

void AudioFilterEditorView::OnEditorViewSizeChanged() {
    // An editor that draws into no platform window has no place here whose size could change.
    if (mInSizeChange || !mContentView) return;
    const boost::intrusive_ptr<AudioFilterEditorView> self(this);
    const Guard guard(mInSizeChange);
    if (PluginEmbedView* const embedView = dynamic_cast<PluginEmbedView*>(mContentView.get()))
        embedView->SyncSizeFromEditor();
    const RectF content = mContentView->UI_GetLocalRectF(false);
    const float widthChange = content.width - mLastContentRect.width;
    const float heightChange = content.height - mLastContentRect.height;
    if (widthChange == 0.0f && heightChange == 0.0f) return;
    RectF rect = UI_GetLocalRectF(true);
    rect.width = content.width;
    rect.height = content.height;
    UI_SetLocalRectF(rect);
    mLastContentRect = mContentView->UI_GetLocalRectF(true);
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
