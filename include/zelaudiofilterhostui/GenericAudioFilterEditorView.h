#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>
#include <zelui/UI_SubView.h>

#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// An editor made of nothing but the filter's parameters: one row for each, with its name, a slider, the filter's text
/// for the value, and the unit. For plug-ins without an editor of their own, and for a look behind those that have one.
///
/// The view is kWidth wide and as high as its rows; a host shows it in a scroll area. The rows are those of the moment
/// at which it was made: parameters that come or go later, and values that are changed elsewhere, show in the next
/// view. Moving a slider sets the parameter at once. Held by intrusive pointer; holds its filter. Main thread only.
class ZELAUDIOFILTERHOSTUI_API GenericAudioFilterEditorView : public zelui::ui::UI_SubView {
public:
    /// In display units.
    static constexpr float kRowHeight = 22.0f;
    /// How wide the view is, in display units.
    static constexpr float kWidth = 380.0f;

    /// The view of that filter (not null), complete with its rows, its frame at 0, 0.
    static boost::intrusive_ptr<GenericAudioFilterEditorView> Create(
        const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter);

protected:
    ~GenericAudioFilterEditorView() override;

private:
    explicit GenericAudioFilterEditorView(const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter);

    void CreateLayout();

    const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> mFilter;
};

}  // namespace zelaudiofilterhostui
