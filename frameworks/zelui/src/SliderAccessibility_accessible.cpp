#include "SliderAccessibility.h"

#include <QAccessibleWidget>

#include "SliderWidget.h"

namespace zelui {

namespace {

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

SliderAccessible::SliderAccessible(SliderWidget& slider) : QAccessibleWidget(&slider, QAccessible::Slider) {}

void* SliderAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

SliderWidget* SliderAccessible::GetSlider() const { return static_cast<SliderWidget*>(widget()); }

QVariant SliderAccessible::currentValue() const {
    const SliderWidget::Client* const client = GetSlider()->GetClient();
    return client != nullptr ? QVariant(client->GetValue()) : QVariant();
}

void SliderAccessible::setCurrentValue(const QVariant& value) {
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    SliderWidget::Client* const client = GetSlider()->GetClient();
    if (isNumber && client != nullptr && GetSlider()->isEnabled() && !GetSlider()->IsHeld()) client->SetByUser(number);
}

QVariant SliderAccessible::maximumValue() const {
    const SliderWidget::Client* const client = GetSlider()->GetClient();
    return client != nullptr ? QVariant(client->GetMaximum()) : QVariant();
}

QVariant SliderAccessible::minimumValue() const {
    const SliderWidget::Client* const client = GetSlider()->GetClient();
    return client != nullptr ? QVariant(client->GetMinimum()) : QVariant();
}

QVariant SliderAccessible::minimumStepSize() const {
    const SliderWidget::Client* const client = GetSlider()->GetClient();
    return client != nullptr ? QVariant((client->GetMaximum() - client->GetMinimum()) / 1000.0) : QVariant();
}

QAccessibleInterface* MakeSliderAccessible(const QString&, QObject* object) {
    SliderWidget* const slider = dynamic_cast<SliderWidget*>(object);
    return slider != nullptr ? new SliderAccessible(*slider) : nullptr;
}

}  // namespace

void InstallSliderAccessible() { QAccessible::installFactory(&MakeSliderAccessible); }

}  // namespace zelui
