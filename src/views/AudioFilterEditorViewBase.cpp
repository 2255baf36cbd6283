#include <zelaudiofilterhostui/AudioFilterEditorViewBase.h>

namespace zelaudiofilterhostui {

using zelaudiofilterhost::AudioFilter;

AudioFilterEditorViewBase::AudioFilterEditorViewBase(const boost::intrusive_ptr<AudioFilter>& filter)
    : mFilter(filter) {}

AudioFilterEditorViewBase::~AudioFilterEditorViewBase() = default;

boost::intrusive_ptr<AudioFilter> AudioFilterEditorViewBase::GetAudioFilter() const { return mFilter; }

AudioFilterEditorViewBase::ContentSizeChangedSignal& AudioFilterEditorViewBase::GetContentSizeChangedSignal() {
    return mContentSizeChangedSignal;
}

AudioFilterEditorViewBase::AdvanceFocusSignal& AudioFilterEditorViewBase::GetAdvanceFocusSignal() {
    return mAdvanceFocusSignal;
}

void AudioFilterEditorViewBase::OpenEditor() {}

void AudioFilterEditorViewBase::CloseEditor() {}

bool AudioFilterEditorViewBase::DispatchKeyboardFocus(bool) { return false; }

bool AudioFilterEditorViewBase::WantsToDispatchKeyboardFocus() { return false; }

bool AudioFilterEditorViewBase::DispatchCurrentFocus() { return false; }

bool AudioFilterEditorViewBase::CanScrollContent() const { return false; }

bool AudioFilterEditorViewBase::CanResizeContent() const { return false; }

}  // namespace zelaudiofilterhostui
