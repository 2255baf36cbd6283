#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>

#include <boost/bind/bind.hpp>
#include <boost/make_shared.hpp>
#include <zelui/UI_Slider.h>
#include <zelui/UI_StaticText.h>

namespace zelaudiofilterhostui {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterParameterInfo;
using zelcore::ustring;
using zelui::controls::UI_InteractiveControlChangedMessage;
using zelui::controls::UI_Slider;
using zelui::controls::UI_StaticText;

namespace {

constexpr float kRowHeight = GenericAudioFilterEditorView::kRowHeight;

// The columns, from the left, and what is free before, between and behind them.
constexpr float kGap = 4.0f;
constexpr float kNameWidth = 130.0f;
constexpr float kSliderWidth = 120.0f;
constexpr float kValueWidth = 60.0f;
constexpr float kUnitWidth = 50.0f;
constexpr float kNameLeft = kGap;
constexpr float kSliderLeft = kNameLeft + kNameWidth + kGap;
constexpr float kValueLeft = kSliderLeft + kSliderWidth + kGap;
constexpr float kUnitLeft = kValueLeft + kValueWidth + kGap;
static_assert(kUnitLeft + kUnitWidth + kGap == GenericAudioFilterEditorView::kWidth, "the columns fill the view");

/// What all parameters' values run through.
const std::pair<double, double> kNormalized(0.0, 1.0);

/// One parameter's row.
class GenericEditorRow : public zelui::ui::UI_SubView {
public:
    GenericEditorRow(const boost::intrusive_ptr<AudioFilter>& filter, int parameterIndex);

protected:
    ~GenericEditorRow() override;

private:
    boost::intrusive_ptr<UI_StaticText> AddText(float left, float width, const ustring& text);
    void AddSlider();
    void OnSliderChanged(UI_InteractiveControlChangedMessage* message);
    void ApplyValue();

    const boost::intrusive_ptr<AudioFilter> mFilter;
    const int mParameterIndex;
    boost::intrusive_ptr<UI_Slider> mSlider;
    boost::intrusive_ptr<UI_StaticText> mValueText;
    /// Whether the user holds the slider: the place where the beginning and the end of a gesture are recorded.
    bool mInGesture;
};

GenericEditorRow::GenericEditorRow(const boost::intrusive_ptr<AudioFilter>& filter, int parameterIndex)
    : mFilter(filter), mParameterIndex(parameterIndex), mInGesture(false) {
    const boost::intrusive_ptr<AudioFilterParameterInfo> info = mFilter->GetParameterInfo(mParameterIndex);
    AddText(kNameLeft, kNameWidth, info->GetName());
    AddSlider();
    mValueText = AddText(kValueLeft, kValueWidth, mFilter->GetParameterValueString(mParameterIndex));
    mValueText->SetAlignment(zelui::controls::kAlignRight);
    AddText(kUnitLeft, kUnitWidth, info->GetLabel());
}

// The slider may be held by others, and must not call a row that is gone.
GenericEditorRow::~GenericEditorRow() { mSlider->NotifyWhenChangedInteractively(nullptr); }

boost::intrusive_ptr<UI_StaticText> GenericEditorRow::AddText(float left, float width, const ustring& text) {
    const boost::intrusive_ptr<UI_StaticText> control(new UI_StaticText);
    control->UI_SetLocalRectF({left, 0.0f, width, kRowHeight});
    control->UI_Show(true);
    control->SetLabelText(text);
    ChildPushBack(control);
    return control;
}

void GenericEditorRow::AddSlider() {
    const float value = mFilter->GetParameterValue(mParameterIndex);
    mSlider = new UI_Slider(zelui::controls::kSliderHorizontal, false);
    mSlider->UI_SetLocalRectF({kSliderLeft, 0.0f, kSliderWidth, kRowHeight});
    mSlider->UI_Show(true);
    mSlider->SetValueRange(kNormalized);
    mSlider->SetExtent(kNormalized);
    mSlider->SetValue(static_cast<double>(value));
    mSlider->NotifyWhenChangedInteractively(boost::make_shared<UI_Slider::InteractivelyChangedFunction>(
        boost::bind(&GenericEditorRow::OnSliderChanged, this, boost::placeholders::_1)));
    ChildPushBack(mSlider);
}

void GenericEditorRow::OnSliderChanged(UI_InteractiveControlChangedMessage* message) {
    // The filter's code runs below, and what a plug-in shows there may end the view.
    const boost::intrusive_ptr<GenericEditorRow> self(this);
    switch (message->GetChangeMessage()) {
        case UI_InteractiveControlChangedMessage::kStart:
            mInGesture = true;
            break;
        case UI_InteractiveControlChangedMessage::kChange:
            ApplyValue();
            break;
        case UI_InteractiveControlChangedMessage::kEnd:
            ApplyValue();
            mInGesture = false;
            break;
        case UI_InteractiveControlChangedMessage::kCancel:
            mInGesture = false;
            break;
        default:
            break;
    }
}

void GenericEditorRow::ApplyValue() {
    mFilter->SetParameterValue(mParameterIndex, static_cast<float>(mSlider->GetValue()));
    mValueText->SetLabelText(mFilter->GetParameterValueString(mParameterIndex));
    UI_Invalidate();
}

}  // namespace

// Who takes their addresses on Windows wants them to be in the library.
constexpr float GenericAudioFilterEditorView::kRowHeight;
constexpr float GenericAudioFilterEditorView::kWidth;

GenericAudioFilterEditorView::GenericAudioFilterEditorView(const boost::intrusive_ptr<AudioFilter>& filter)
    : mFilter(filter) {}

GenericAudioFilterEditorView::~GenericAudioFilterEditorView() = default;

boost::intrusive_ptr<GenericAudioFilterEditorView> GenericAudioFilterEditorView::Create(
    const boost::intrusive_ptr<AudioFilter>& filter) {
    const boost::intrusive_ptr<GenericAudioFilterEditorView> view(new GenericAudioFilterEditorView(filter));
    view->CreateLayout();
    return view;
}

void GenericAudioFilterEditorView::CreateLayout() {
    const int count = mFilter->GetParameterCount();
    zelcore::geom::RectF frame = {0.0f, 0.0f, kWidth, kRowHeight};
    for (int i = 0; i < count; ++i) {
        const boost::intrusive_ptr<GenericEditorRow> row(new GenericEditorRow(mFilter, i));
        row->UI_SetLocalRectF(frame);
        row->UI_Show(true);
        ChildPushBack(row);
        frame.top += kRowHeight;
    }
    UI_SetLocalRectF({0.0f, 0.0f, kWidth, static_cast<float>(count) * kRowHeight});
}

}  // namespace zelaudiofilterhostui
