#pragma once

#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilterBusDescription.h>
#include <zelaudiofilterhost/ChannelMap.h>
#include <zelcore/Signals.h>
#include <zelmediatypes/AudioChannelLayout.h>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_Popup.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_TextButton.h>

#include <zelaudiofilterhostui/AudioFilterEditorViewBase.h>
#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// An editor of how the track's channels are routed through a filter: one row per channel of the track, with a popup
/// for the effect input that it feeds and, but for the channels of the side-chain, one for the effect output that it
/// gets; and a button that goes back to the best fit.
///
/// A choice is made in the filter at once. Changes from elsewhere, another editor of the same filter included, are
/// shown. The view is as large as its texts need and cannot be resized; a host shows it in a scroll area. When the
/// track gets other channels the rows are made anew and the content-size-changed signal is fired. Held by intrusive
/// pointer; holds its filter. Main thread only, where the filter's signals have to be fired, too.
class ZELAUDIOFILTERHOSTUI_API AudioFilterChannelMapEditorView : public AudioFilterEditorViewBase,
                                                                 public boost::signals::trackable {
public:
    /// For each effect channel the target channel that it is connected with.
    typedef zelaudiofilterhost::ChannelMap ChannelMap;
    /// Told the map of the inputs before the change and after it, then those of the outputs.
    typedef boost::signal<void(const ChannelMap&, const ChannelMap&, const ChannelMap&, const ChannelMap&)>
        ChannelMapChangedInteractivelySignal;

    /// The view of that filter (not null), complete and sized, its frame at 0, 0. `supplier`, which may be null and
    /// outlives the view, measures texts as long as the view stands in no window.
    static boost::intrusive_ptr<AudioFilterChannelMapEditorView> Create(
        const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter,
        const zelui::drawbot::SupplierInterface* supplier);

    /// Fired after a change of the routing that the user made in this view, once for each; never for changes from
    /// elsewhere, nor for a choice that changes nothing.
    ChannelMapChangedInteractivelySignal& GetChannelMapChangedInteractivelySignal();

    /// The lowest effect channel that is connected with a target channel, -1 for none.
    int GetEffectChannelIndexForTarget(int targetChannel, zelaudiofilterhost::AudioFilter::Direction direction) const;
    /// What a channel reads: its label, or its number from 1 for `channel`, which counts from 0; of the side-chain with
    /// the name of that bus.
    zelcore::ustring GetChannelLabelString(zelmediatypes::AudioChannelLabel label, int channel, bool isSideChain) const;
    /// The items of a popup over these buses: none, a blank, then each effect channel.
    std::vector<zelcore::ustring> GetEffectChannelStrings(const zelaudiofilterhost::AudioFilterBusList& buses) const;
    /// A new popup with these items.
    boost::intrusive_ptr<zelui::controls::UI_Popup> CreateChannelPopup(
        const zelaudiofilterhost::AudioFilterBusList& buses) const;
    /// Gives a popup these items in place of those that it has.
    void PopulateChannelPopup(zelui::controls::UI_Popup& popup,
                              const zelaudiofilterhost::AudioFilterBusList& buses) const;
    /// Has the popup show an effect channel, or -1: that there is none in this direction, or, when
    /// `otherEffectChannel` is -1 as well, that the channel goes past the filter.
    void UpdateChannelPopup(zelui::controls::UI_Popup& popup, int effectChannel, int otherEffectChannel) const;

    bool CanScrollContent() const override;
    bool CanResizeContent() const override;
    /// The node's own; the one that was given to Create where it has none.
    const zelui::drawbot::SupplierInterface* UI_GetDrawSupplier() const override;

protected:
    ~AudioFilterChannelMapEditorView() override;

private:
    typedef zelaudiofilterhost::AudioFilter::Direction Direction;

    /// One channel of the track.
    struct ChannelMapItem {
        int targetChannel = 0;
        zelmediatypes::AudioChannelLabel label = zelmediatypes::kChannelDiscrete;
        int inputEffectChannel = -1;   ///< the effect input that reads this channel; -1 for none
        int outputEffectChannel = -1;  ///< the effect output that this channel gets; -1 for none
        boost::intrusive_ptr<zelui::controls::UI_StaticText> channelText;
        boost::intrusive_ptr<zelui::controls::UI_Popup> inputPopup;
        // Null for channels of the side-chain:
        boost::intrusive_ptr<zelui::controls::UI_Popup> outputPopup;
        boost::intrusive_ptr<zelui::controls::UI_StaticText> rightChannelText;

        /// Has the popups tell nobody any more.
        void Silence() const;
    };

    /// How wide the columns are: the channels' names, each of the popups, the names again.
    struct Columns {
        float channel = 0.0f;
        float popup = 0.0f;
        float right = 0.0f;
    };

    AudioFilterChannelMapEditorView(const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter>& filter,
                                    const zelui::drawbot::SupplierInterface* supplier);

    void CreateUI();
    void PopulateChannelMapItems();
    void RemoveChannelMapItems();
    boost::intrusive_ptr<zelui::controls::UI_StaticText> AddText(const zelcore::ustring& text);
    boost::intrusive_ptr<zelui::controls::UI_Popup> AddChannelPopup(int targetChannel, Direction direction,
                                                                    const zelcore::ustring& channelText);
    void UpdateChannelPopups(const ChannelMapItem& item) const;
    void FireIfChanged(const ChannelMap& inputBefore, const ChannelMap& outputBefore);

    Columns MeasureColumns() const;
    float MeasurePopup(zelui::controls::UI_Popup& popup, const zelui::drawbot::Drawbot& drawbot) const;
    float GetMaxStringWidth(const std::vector<zelcore::ustring>& strings) const;
    void LayoutControls();
    void SizeToContent();

    void OnChannelPopupChanged(zelui::controls::UI_ControlChangedMessage* message, int targetChannel,
                               Direction direction);
    void OnResetRouting(zelui::controls::UI_ButtonChangedMessage* message);
    void OnAudioFilterChannelMapChanged(Direction direction);
    void OnAudioFilterTargetFormatChanged();

    const boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> mFilter;
    zelmediatypes::AudioChannelLayout mTargetLayout;
    zelaudiofilterhost::AudioFilterBusDescription mSideChainBus;
    zelaudiofilterhost::AudioFilterBusList mInputBuses;
    zelaudiofilterhost::AudioFilterBusList mOutputBuses;
    boost::signals::scoped_connection mChannelMapConnection;
    boost::signals::scoped_connection mTargetFormatConnection;
    boost::intrusive_ptr<zelui::controls::UI_TextButton> mResetButton;
    const zelui::drawbot::SupplierInterface* const mSupplier;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mChannelHeader;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mInputHeader;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mOutputHeader;
    boost::intrusive_ptr<zelui::controls::UI_StaticText> mRightChannelHeader;
    ChannelMapChangedInteractivelySignal mChangedInteractivelySignal;
    std::vector<ChannelMapItem> mItems;
};

}  // namespace zelaudiofilterhostui
