#include <zelaudiofilterhostui/AudioFilterChannelMapEditorView.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <boost/bind/bind.hpp>
#include <boost/make_shared.hpp>
#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>
#include <zelui/Theme.h>

namespace zelaudiofilterhostui {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterBusDescription;
using zelaudiofilterhost::AudioFilterBusList;
using zelcore::ustring;
using zelcore::config::Localize;
using zelmediatypes::AudioChannelLabel;
using zelmediatypes::AudioChannelLayout;
using zelui::controls::UI_Button;
using zelui::controls::UI_ButtonChangedMessage;
using zelui::controls::UI_ControlChangedMessage;
using zelui::controls::UI_Popup;
using zelui::controls::UI_StaticText;

namespace {

// Values of the popups' items. Between the two stands a blank one.
constexpr int kNoneItem = 0;
constexpr int kFirstChannelItem = 2;

// The layout, in display units. The margin before the columns is narrower than the one behind the button, on purpose.
constexpr float kNearMargin = 10.0f;
constexpr float kFarMargin = 20.0f;
constexpr float kColumnGap = 6.0f;
constexpr float kLineHeight = 20.0f;
constexpr float kFirstRowTop = 32.0f;
constexpr float kRowPitch = 22.0f;
constexpr float kPopupInset = 2.0f;
constexpr float kMeasuringFontSize = 11.0f;

constexpr char kChannel[] = "$$$/zelaudiofilterhostui/ChannelMapEditor/Channel=Channel";
constexpr char kEffectInput[] = "$$$/zelaudiofilterhostui/ChannelMapEditor/EffectInput=Effect Input";
constexpr char kEffectOutput[] = "$$$/zelaudiofilterhostui/ChannelMapEditor/EffectOutput=Effect Output";
constexpr char kResetRouting[] = "$$$/zelaudiofilterhostui/ChannelMapEditor/ResetRouting=Reset Routing";
constexpr char kNone[] = "$$$/zelaudiofilterhostui/ChannelMapEditor/ChannelNone=(None)";
constexpr char kBypass[] = "$$$/zelaudiofilterhostui/ChannelMapEditor/ChannelBypass=Bypass";
constexpr char kSideChain[] = "$$$/zelaudiofilterhostui/channelmapeditor/SideChain=Side Chain: @0";
constexpr char kSideChainName[] = "$$$/zelaudiofilterhostui/channelmapeditor/SideChainName=@0 (@1)";
constexpr char kPopupName[] = "$$$/zelaudiofilterhostui/ChannelMapEditor/PopupName=@0: @1";

ustring Ascii(std::string_view text) { return zelcore::utility::AsciiToUTF16(text); }

ustring Fill(std::string_view keyAndDefault, const ustring& first, const ustring& second = ustring()) {
    return zelcore::utility::FillPlaceholders(Localize(keyAndDefault), {first, second});
}

}  // namespace

AudioFilterChannelMapEditorView::AudioFilterChannelMapEditorView(const boost::intrusive_ptr<AudioFilter>& filter,
                                                                 const zelui::drawbot::SupplierInterface* supplier)
    : AudioFilterEditorViewBase(filter),
      mFilter(filter),
      mTargetLayout(filter->GetChannelMapTargetChannelLayout()),
      mSideChainBus(filter->GetSideChainTargetBus()),
      mSupplier(supplier) {
    mFilter->GetBusConfiguration(mInputBuses, mOutputBuses);
    mChannelMapConnection = mFilter->GetChannelMapChangedSignal().connect(
        boost::bind(&AudioFilterChannelMapEditorView::OnAudioFilterChannelMapChanged, this, boost::placeholders::_1));
    mTargetFormatConnection = mFilter->GetTargetFormatChangedSignal().connect(
        boost::bind(&AudioFilterChannelMapEditorView::OnAudioFilterTargetFormatChanged, this));
}

// The controls may be held by others, and must not call a view that is gone.
AudioFilterChannelMapEditorView::~AudioFilterChannelMapEditorView() {
    for (const ChannelMapItem& item : mItems) item.Silence();
    if (mResetButton) mResetButton->NotifyWhenChanged(boost::shared_ptr<UI_Button::ButtonChangedFunction>());
}

boost::intrusive_ptr<AudioFilterChannelMapEditorView> AudioFilterChannelMapEditorView::Create(
    const boost::intrusive_ptr<AudioFilter>& filter, const zelui::drawbot::SupplierInterface* supplier) {
    const boost::intrusive_ptr<AudioFilterChannelMapEditorView> view(
        new AudioFilterChannelMapEditorView(filter, supplier));
    view->CreateUI();
    view->SizeToContent();
    return view;
}

AudioFilterChannelMapEditorView::ChannelMapChangedInteractivelySignal&
AudioFilterChannelMapEditorView::GetChannelMapChangedInteractivelySignal() {
    return mChangedInteractivelySignal;
}

bool AudioFilterChannelMapEditorView::CanScrollContent() const { return true; }

bool AudioFilterChannelMapEditorView::CanResizeContent() const { return false; }

const zelui::drawbot::SupplierInterface* AudioFilterChannelMapEditorView::UI_GetDrawSupplier() const {
    const zelui::drawbot::SupplierInterface* const own = AudioFilterEditorViewBase::UI_GetDrawSupplier();
    return own != nullptr ? own : mSupplier;
}

// Items

// One record serves all rows, on purpose: a row of the side-chain has no output of its own and keeps that of the last
// main row, by which its popup tells "Bypass" from "(None)".
void AudioFilterChannelMapEditorView::PopulateChannelMapItems() {
    RemoveChannelMapItems();
    // The focus that went with them may have had somebody change the format, and with it fill in the rows.
    if (!mItems.empty()) return;
    const AudioChannelLayout& sideChain = mSideChainBus.GetLayout();
    ChannelMapItem item;
    for (std::size_t i = 0; i < mTargetLayout.size() + sideChain.size(); ++i) {
        const bool isSideChain = i >= mTargetLayout.size();
        item.targetChannel = static_cast<int>(i);
        item.label = isSideChain ? sideChain[i - mTargetLayout.size()].label : mTargetLayout[i].label;
        item.inputEffectChannel = GetEffectChannelIndexForTarget(item.targetChannel, AudioFilter::kInput);
        const ustring text = GetChannelLabelString(item.label, item.targetChannel, isSideChain);
        item.channelText = AddText(text);
        item.inputPopup = AddChannelPopup(item.targetChannel, AudioFilter::kInput, text);
        item.outputPopup.reset();
        item.rightChannelText.reset();
        if (!isSideChain) {
            item.outputEffectChannel = GetEffectChannelIndexForTarget(item.targetChannel, AudioFilter::kOutput);
            item.outputPopup = AddChannelPopup(item.targetChannel, AudioFilter::kOutput, text);
            item.rightChannelText = AddText(text);
        }
        UpdateChannelPopups(item);
        mItems.push_back(item);
    }
}

void AudioFilterChannelMapEditorView::ChannelMapItem::Silence() const {
    const boost::shared_ptr<UI_Popup::ChangedFunction> none;
    inputPopup->NotifyWhenChanged(none);
    if (outputPopup) outputPopup->NotifyWhenChanged(none);
}

void AudioFilterChannelMapEditorView::RemoveChannelMapItems() {
    const std::vector<ChannelMapItem> items = std::exchange(mItems, {});
    for (const ChannelMapItem& item : items) {
        item.Silence();
        ChildRemove(item.channelText);
        ChildRemove(item.inputPopup);
        if (item.outputPopup) ChildRemove(item.outputPopup);
        if (item.rightChannelText) ChildRemove(item.rightChannelText);
    }
}

boost::intrusive_ptr<UI_StaticText> AudioFilterChannelMapEditorView::AddText(const ustring& text) {
    const boost::intrusive_ptr<UI_StaticText> control(new UI_StaticText);
    control->SetValue(text);
    control->UI_Show(true);
    ChildPushBack(control);
    return control;
}

boost::intrusive_ptr<UI_Popup> AudioFilterChannelMapEditorView::AddChannelPopup(int targetChannel, Direction direction,
                                                                                const ustring& channelText) {
    const bool isInput = direction == AudioFilter::kInput;
    const boost::intrusive_ptr<UI_Popup> popup = CreateChannelPopup(isInput ? mInputBuses : mOutputBuses);
    popup->NotifyWhenChanged(boost::make_shared<UI_Popup::ChangedFunction>(
        boost::bind(&AudioFilterChannelMapEditorView::OnChannelPopupChanged, this, boost::placeholders::_1,
                    targetChannel, direction)));
    popup->UI_SetAccessibleName(Fill(kPopupName, Localize(isInput ? kEffectInput : kEffectOutput), channelText));
    ChildPushBack(popup);
    return popup;
}

boost::intrusive_ptr<UI_Popup> AudioFilterChannelMapEditorView::CreateChannelPopup(
    const AudioFilterBusList& buses) const {
    const boost::intrusive_ptr<UI_Popup> popup(new UI_Popup(zelui::controls::kPopupChoice, false));
    popup->SetWantsKeyboardFocus(true);
    PopulateChannelPopup(*popup, buses);
    popup->UI_Show(true);
    return popup;
}

void AudioFilterChannelMapEditorView::PopulateChannelPopup(UI_Popup& popup, const AudioFilterBusList& buses) const {
    for (const ustring& text : GetEffectChannelStrings(buses)) popup.AddItem(text);
}

std::vector<ustring> AudioFilterChannelMapEditorView::GetEffectChannelStrings(const AudioFilterBusList& buses) const {
    std::vector<ustring> strings = {Localize(kNone), ustring()};
    for (const AudioFilterBusDescription& bus : buses) {
        const bool names = buses.size() > 1 && !bus.GetName().empty();
        int channel = 0;
        for (const zelmediatypes::AudioChannelDescription& description : bus.GetLayout()) {
            const ustring text = GetChannelLabelString(description.label, channel++, false);
            strings.push_back(names ? bus.GetName() + Ascii(": ") + text : text);
        }
    }
    return strings;
}

ustring AudioFilterChannelMapEditorView::GetChannelLabelString(AudioChannelLabel label, int channel,
                                                               bool isSideChain) const {
    const ustring text = label != zelmediatypes::kChannelDiscrete
                             ? zelmediatypes::AudioChannelLabelDescription(label, false)
                             : Ascii(std::to_string(channel + 1));
    if (!isSideChain) return text;
    const ustring& bus = mSideChainBus.GetName();
    return bus.empty() ? Fill(kSideChain, text) : Fill(kSideChainName, text, bus);
}

int AudioFilterChannelMapEditorView::GetEffectChannelIndexForTarget(int targetChannel, Direction direction) const {
    if (targetChannel < 0) return -1;
    for (const auto& [channel, target] : mFilter->GetChannelMap(direction))
        if (target == targetChannel) return channel;
    return -1;
}

void AudioFilterChannelMapEditorView::UpdateChannelPopup(UI_Popup& popup, int effectChannel,
                                                         int otherEffectChannel) const {
    const int item = effectChannel < 0 ? kNoneItem : effectChannel + kFirstChannelItem;
    // A filter may have got channels since the items were made.
    popup.SetValue(item < popup.GetItemCount() ? item : kNoneItem);
    if (effectChannel == -1 && otherEffectChannel == -1) popup.SetValueString(Localize(kBypass), false);
    popup.UI_Invalidate();
}

void AudioFilterChannelMapEditorView::UpdateChannelPopups(const ChannelMapItem& item) const {
    if (item.outputPopup) UpdateChannelPopup(*item.outputPopup, item.outputEffectChannel, item.inputEffectChannel);
    UpdateChannelPopup(*item.inputPopup, item.inputEffectChannel, item.outputEffectChannel);
}

// Changes

// Code of hosts and plug-ins runs in all of these, and may let go of the view.

void AudioFilterChannelMapEditorView::OnChannelPopupChanged(UI_ControlChangedMessage* message, int targetChannel,
                                                            Direction direction) {
    const boost::intrusive_ptr<AudioFilterChannelMapEditorView> self(this);
    const UI_Popup* const popup = dynamic_cast<const UI_Popup*>(message->GetControl().get());
    if (popup == nullptr) return;
    const ChannelMap inputBefore = mFilter->GetChannelMap(AudioFilter::kInput);
    const ChannelMap outputBefore = mFilter->GetChannelMap(AudioFilter::kOutput);
    const int value = popup->GetValue();
    if (value >= kFirstChannelItem) {
        mFilter->AssignChannelMapping(direction, value - kFirstChannelItem, targetChannel);
    } else if (value == kNoneItem) {
        const int effectChannel = GetEffectChannelIndexForTarget(targetChannel, direction);
        if (effectChannel >= 0)
            mFilter->AssignChannelMapping(direction, effectChannel, zelaudiofilterhost::kNotConnected);
    }
    FireIfChanged(inputBefore, outputBefore);
}

void AudioFilterChannelMapEditorView::OnResetRouting(UI_ButtonChangedMessage*) {
    const boost::intrusive_ptr<AudioFilterChannelMapEditorView> self(this);
    const ChannelMap inputBefore = mFilter->GetChannelMap(AudioFilter::kInput);
    const ChannelMap outputBefore = mFilter->GetChannelMap(AudioFilter::kOutput);
    const ChannelMap input = AudioFilter::BuildBestFitChannelMap(mInputBuses, mTargetLayout);
    const ChannelMap output = AudioFilter::BuildBestFitChannelMap(mOutputBuses, mTargetLayout);
    const AudioChannelLayout layout = mTargetLayout;
    mFilter->SetChannelMap(input, AudioFilter::kInput);
    // Unless somebody has answered the first change with another format, which brings maps of its own.
    if (layout == mFilter->GetChannelMapTargetChannelLayout()) {
        mFilter->SetChannelMap(output, AudioFilter::kOutput);
        mFilter->AutoConnectSideChainChannels(true);
    }
    FireIfChanged(inputBefore, outputBefore);
}

void AudioFilterChannelMapEditorView::FireIfChanged(const ChannelMap& inputBefore, const ChannelMap& outputBefore) {
    const ChannelMap inputAfter = mFilter->GetChannelMap(AudioFilter::kInput);
    const ChannelMap outputAfter = mFilter->GetChannelMap(AudioFilter::kOutput);
    if (inputBefore == inputAfter && outputBefore == outputAfter) return;
    mChangedInteractivelySignal(inputBefore, inputAfter, outputBefore, outputAfter);
}

void AudioFilterChannelMapEditorView::OnAudioFilterChannelMapChanged(Direction direction) {
    for (ChannelMapItem& item : mItems) {
        int& effectChannel = direction == AudioFilter::kInput ? item.inputEffectChannel : item.outputEffectChannel;
        effectChannel = GetEffectChannelIndexForTarget(item.targetChannel, direction);
        UpdateChannelPopups(item);
    }
}

void AudioFilterChannelMapEditorView::OnAudioFilterTargetFormatChanged() {
    const boost::intrusive_ptr<AudioFilterChannelMapEditorView> self(this);
    const AudioChannelLayout layout = mFilter->GetChannelMapTargetChannelLayout();
    const AudioFilterBusDescription sideChain = mFilter->GetSideChainTargetBus();
    if (layout == mTargetLayout && sideChain == mSideChainBus) return;
    mTargetLayout = layout;
    mSideChainBus = sideChain;
    mFilter->GetBusConfiguration(mInputBuses, mOutputBuses);
    PopulateChannelMapItems();
    // The Tab key still comes to the button last.
    const bool hadFocus = mResetButton->UI_HasKeyboardFocus(false);
    ChildPushBack(mResetButton);
    if (hadFocus) mResetButton->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    LayoutControls();
    SizeToContent();
    GetContentSizeChangedSignal()();
}

// Controls and their places

void AudioFilterChannelMapEditorView::CreateUI() {
    mChannelHeader = AddText(Localize(kChannel));
    mInputHeader = AddText(Localize(kEffectInput));
    mOutputHeader = AddText(Localize(kEffectOutput));
    mRightChannelHeader = AddText(mChannelHeader->GetValue());
    PopulateChannelMapItems();
    mResetButton = new zelui::controls::UI_TextButton;
    mResetButton->SetText(Localize(kResetRouting));
    mResetButton->NotifyWhenChanged(boost::make_shared<UI_Button::ButtonChangedFunction>(
        boost::bind(&AudioFilterChannelMapEditorView::OnResetRouting, this, boost::placeholders::_1)));
    ChildPushBack(mResetButton);
    LayoutControls();
    mResetButton->UI_Show(true);
}

float AudioFilterChannelMapEditorView::GetMaxStringWidth(const std::vector<ustring>& strings) const {
    const zelui::drawbot::SupplierInterface* const supplier = UI_GetDrawSupplier();
    if (supplier == nullptr) return 0.0f;
    const boost::intrusive_ptr<zelui::drawbot::Font> font =
        supplier->NewFont(zelui::ui::GetFontName(0), zelui::drawbot::SupplierInterface::kFontPlain, kMeasuringFontSize);
    if (!font) return 0.0f;
    float width = 0.0f;
    for (const ustring& string : strings) width = std::max(width, font->GetStringWidth(string));
    return width;
}

// "Bypass" is no item, and has to fit all the same.
float AudioFilterChannelMapEditorView::MeasurePopup(UI_Popup& popup, const zelui::drawbot::Drawbot& drawbot) const {
    const int bypass = popup.AddItem(Localize(kBypass));
    const float width = popup.UI_GetRecommendedSize(drawbot).x;
    popup.RemoveItem(bypass);
    return width;
}

AudioFilterChannelMapEditorView::Columns AudioFilterChannelMapEditorView::MeasureColumns() const {
    const auto measureTexts = [this](const AudioFilterBusList& buses, const UI_StaticText& header) {
        std::vector<ustring> strings = GetEffectChannelStrings(buses);
        strings.push_back(header.GetValue());
        return GetMaxStringWidth(strings);
    };
    float popup = std::max(measureTexts(mInputBuses, *mInputHeader), measureTexts(mOutputBuses, *mOutputHeader));
    std::vector<ustring> channels = {mChannelHeader->GetValue()};
    std::vector<ustring> rightChannels = {mRightChannelHeader->GetValue()};
    const zelui::drawbot::SupplierInterface* const supplier = UI_GetDrawSupplier();
    const boost::intrusive_ptr<zelui::drawbot::Drawbot> drawbot =
        supplier != nullptr ? supplier->NewDrawbot(1, 1, 1) : nullptr;
    for (const ChannelMapItem& item : mItems) {
        channels.push_back(item.channelText->GetValue());
        if (item.rightChannelText) rightChannels.push_back(item.rightChannelText->GetValue());
        if (!drawbot) continue;
        popup = std::max(popup, MeasurePopup(*item.inputPopup, *drawbot));
        if (item.outputPopup) popup = std::max(popup, MeasurePopup(*item.outputPopup, *drawbot));
    }
    return {std::ceil(GetMaxStringWidth(channels)), std::ceil(popup), std::ceil(GetMaxStringWidth(rightChannels))};
}

void AudioFilterChannelMapEditorView::LayoutControls() {
    const Columns width = MeasureColumns();
    const float inputLeft = kNearMargin + width.channel + kColumnGap;
    const float outputLeft = inputLeft + width.popup + kColumnGap;
    const float rightLeft = outputLeft + width.popup + kColumnGap;
    mChannelHeader->UI_SetLocalRectF({kNearMargin, kNearMargin, width.channel, kLineHeight});
    mInputHeader->UI_SetLocalRectF({inputLeft, kNearMargin, width.popup, kLineHeight});
    mOutputHeader->UI_SetLocalRectF({outputLeft, kNearMargin, width.popup, kLineHeight});
    mRightChannelHeader->UI_SetLocalRectF({rightLeft, kNearMargin, width.right, kLineHeight});
    float top = kFirstRowTop;
    for (const ChannelMapItem& item : mItems) {
        item.channelText->UI_SetLocalRectF({kNearMargin, top, width.channel, kLineHeight});
        item.inputPopup->UI_SetLocalRectF({inputLeft - kPopupInset, top, width.popup, kLineHeight});
        if (item.outputPopup)
            item.outputPopup->UI_SetLocalRectF({outputLeft - kPopupInset, top, width.popup, kLineHeight});
        if (item.rightChannelText) item.rightChannelText->UI_SetLocalRectF({rightLeft, top, width.right, kLineHeight});
        top += kRowPitch;
    }
    const zelcore::geom::PointF button = zelui::controls::UI_TextButton::UI_GetRecommendedSize(
        UI_GetDrawSupplier(), mResetButton->GetText(), UI_Button::DefaultTextSize());
    mResetButton->UI_SetLocalRectF({rightLeft + width.right - button.x, top + kNearMargin, button.x, button.y});
}

void AudioFilterChannelMapEditorView::SizeToContent() {
    const zelcore::geom::RectF button = mResetButton->UI_GetLocalRectF();
    UI_SetLocalRectF({0.0f, 0.0f, button.left + button.width + kFarMargin, button.top + button.height + kFarMargin});
}

}  // namespace zelaudiofilterhostui
