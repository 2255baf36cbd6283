#pragma once

#include <optional>

#include <QComboBox>
#include <QStringList>

namespace zelui {

/// A choice from a list that, while it is closed, can show another text in place of the chosen item's.
class PopupWidget final : public QComboBox {
public:
    explicit PopupWidget(QWidget& parent);

    /// Other items than before close the list when it is open: what somebody is about to choose is not there any more.
    void SetItems(const QStringList& items);
    /// `index` is -1 without items.
    void SetChoice(int index, const std::optional<QString>& shownText);

    bool IsOpen() const { return mOpen; }
    /// Whether what the closed popup shows is shortened.
    bool IsElided() const;

    void showPopup() override;

protected:
    void initStyleOption(QStyleOptionComboBox* option) const override;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void WriteTexts();
    int GetTextWidth() const;

    QStringList mItems;
    std::optional<QString> mShownText;
    bool mOpen = false;
};

}  // namespace zelui
