#pragma once

#include <optional>

#include <zelui/UI_Slider.h>

#include "ControlPeer.h"
#include "SliderWidget.h"

namespace zelui {
namespace controls {

/// The Qt side of a slider: makes values of the widget's positions, and tells the steps of gestures.
class UI_Slider::SliderPeer final : public ControlPeer, private SliderWidget::Client {
public:
    explicit SliderPeer(UI_Slider& slider);
    ~SliderPeer() override;

    /// The slider itself is going: nobody is told any more.
    void Forget() { mGesture.reset(); }

    bool CanBeReleased() const override;

private:
    typedef UI_InteractiveControlChangedMessage Message;
    typedef boost::intrusive_ptr<UI_Slider> SliderPtr;

    struct Gesture {
        double startValue;
        double startPosition;
        bool changed;
    };

    QWidget* MakeControl(QWidget& parent) override;
    void OnSync() override;
    bool UsesKey(const QKeyEvent& key) const override;

    double GetPosition() const override;
    double GetValue() const override;
    double GetMinimum() const override;
    double GetMaximum() const override;
    void BeginGesture() override;
    void MoveTo(double position) override;
    void MoveBy(double distance) override;
    void FinishGesture() override;
    void RevertGesture() override;
    void InterruptGesture() override;
    void StepBy(double distance) override;
    void SetByUser(double value) override;

    UI_Slider& GetSlider() const { return static_cast<UI_Slider&>(GetNode()); }
    SliderWidget& GetSliderWidget() const { return static_cast<SliderWidget&>(*GetWidget()); }
    double GetValueAt(double position) const;
    void Take(double value);
    bool Tell(const SliderPtr& slider, Message::ChangeMessage message);

    std::optional<Gesture> mGesture;
};

}  // namespace controls
}  // namespace zelui
