#pragma once

#include <QAccessibleWidget>

namespace zelui {

class SliderWidget;

/// What screen readers know of a slider: its value in the program's own units. Changing it from there is a gesture.
class SliderAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SliderAccessible(SliderWidget& slider);

    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    SliderWidget* GetSlider() const;
};

/// Has Qt use it for all slider widgets. Again is harmless; needed again after the application object was another one.
void InstallSliderAccessible();

}  // namespace zelui
