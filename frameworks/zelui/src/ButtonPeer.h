#pragma once

#include <zelui/UI_Button.h>

#include "ControlPeer.h"

class QAbstractButton;

namespace zelui {
namespace controls {

/// What the Qt sides of buttons share: the text, shortened where it does not fit.
class ButtonPeer : public ControlPeer {
public:
    bool CanBeReleased() const override;

protected:
    explicit ButtonPeer(UI_Button& button);

    QAbstractButton& GetQtButton() const;
    QString GetText() const;

    /// How much room for its text the widget has.
    virtual int GetTextWidth() const = 0;
    void OnSync() override;
    QString GetOwnAccessibleName() const override;
    QString GetOwnToolTip() const override;
    bool UsesKey(const QKeyEvent& key) const override;
};

}  // namespace controls
}  // namespace zelui
