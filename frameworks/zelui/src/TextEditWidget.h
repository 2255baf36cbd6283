#pragma once

#include <QLineEdit>

class QAbstractButton;

namespace zelui {

class ClearButton;

/// A line edit into which nothing gets that ToEditableText would not leave as it is, with room for a magnifier before
/// the text and a button that clears it behind.
class TextEditWidget final : public QLineEdit {
public:
    TextEditWidget(QWidget& parent, qsizetype limit);

    /// Shows another text, with the cursor where it was as far as that is possible; the text's beginning when nobody is
    /// at work on it.
    void ShowText(const QString& text);
    /// Puts the text right where something else than a paste or a drop put into it what must not be there; true when it
    /// was not right, and has been changed. Costs the undo history then.
    bool MendText();

    void ShowMagnifier();
    /// The button, hidden at first.
    QAbstractButton& AddClearButton();
    /// Harmless when there is none.
    void ShowClearButton(bool show);

    /// Whether the text, or in an empty field the placeholder, is wider than the field.
    bool IsCut() const;

private:
    void initStyleOption(QStyleOptionFrame* option) const override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    void Insert(const QString& text);
    void Arrange();
    int GetSideWidth() const;

    const qsizetype mLimit;
    ClearButton* mClearButton = nullptr;
    bool mShowsMagnifier = false;
};

}  // namespace zelui
