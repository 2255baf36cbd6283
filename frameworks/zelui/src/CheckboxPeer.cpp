#include "CheckboxPeer.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionButton>

#include "CallOut.h"
#include "CheckboxWidget.h"

namespace zelui {
namespace controls {

UI_Checkbox::CheckboxPeer::CheckboxPeer(UI_Checkbox& checkbox) : ButtonPeer(checkbox) {}

QWidget* UI_Checkbox::CheckboxPeer::MakeControl(QWidget& parent) {
    QCheckBox* const box = new CheckboxWidget(parent);
    // Not its clicks: screen readers toggle it without one.
    QObject::connect(box, &QCheckBox::toggled, this, [this](bool checked) { OnToggled(checked); });
    return box;
}

void UI_Checkbox::CheckboxPeer::OnSync() {
    ButtonPeer::OnSync();
    const QSignalBlocker blocker(&GetQtButton());
    GetQtButton().setChecked(static_cast<const UI_Checkbox&>(GetNode()).IsChecked());
}

int UI_Checkbox::CheckboxPeer::GetTextWidth() const {
    QStyleOptionButton option;
    option.initFrom(GetWidget());
    return GetWidget()->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, GetWidget()).width();
}

void UI_Checkbox::CheckboxPeer::OnToggled(bool checked) {
    const boost::intrusive_ptr<UI_Checkbox> checkbox(static_cast<UI_Checkbox*>(&GetNode()));
    checkbox->mChecked = checked;
    CallOut("A check box's handler", [&checkbox] { checkbox->TellUsed(); });
}

}  // namespace controls
}  // namespace zelui
