#pragma once

#include <QProgressBar>

namespace zelui {

/// A progress bar for counts of any size with a text of its own: Qt's counts in int and reads "%" in its format.
class ProgressBar final : public QProgressBar {
public:
    explicit ProgressBar(QWidget* parent);

    /// Only shows that something goes on.
    void SetBusy();
    /// `total` is at least 1 and `current` not above it.
    void SetCount(unsigned long current, unsigned long total);
    /// Shown on the bar, shortened to its width.
    void SetBarText(const QString& text);

    QString text() const override;

private:
    QString mBarText;
};

}  // namespace zelui
