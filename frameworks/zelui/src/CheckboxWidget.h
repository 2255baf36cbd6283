#pragma once

#include <QCheckBox>

namespace zelui {

/// A check box whose box can be seen on every background, also while it is not checked.
class CheckboxWidget final : public QCheckBox {
public:
    explicit CheckboxWidget(QWidget& parent) : QCheckBox(&parent) {}

protected:
    void initStyleOption(QStyleOptionButton* option) const override;
};

}  // namespace zelui
