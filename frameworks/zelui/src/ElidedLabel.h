#pragma once

#include <QLabel>

namespace zelui {

/// A line of text that takes the width it is given: a longer one is shortened in its middle, and the whole of it is in
/// the tool tip and for screen readers. Always one line high, also when empty.
class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent);

    void SetFullText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void ShowWhatFits();

    QString mFullText;
};

}  // namespace zelui
