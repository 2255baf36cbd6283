#pragma once

#include <QAbstractButton>

namespace zelui {

/// The small cross inside a text field that empties it; drawn in the colours of the text. It takes no focus from the
/// field.
class ClearButton final : public QAbstractButton {
public:
    explicit ClearButton(QWidget& field);

    QSize sizeHint() const override;

private:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zelui
