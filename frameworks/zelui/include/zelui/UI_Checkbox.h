#pragma once

#include <zelui/UI_Button.h>

namespace zelui {
namespace controls {

/// A box with a check mark and a text beside it.
class ZELUI_API UI_Checkbox : public UI_Button {
public:
    UI_Checkbox();

    /// Sets the mark; tells nobody.
    void SetChecked(bool checked);
    /// Whether the mark is set.
    bool IsChecked() const { return mChecked; }
    /// The same as numbers: 1 is checked, 0 is not.
    void SetValue(int value) { SetChecked(value == 1); }
    /// 1 when the mark is set, else 0.
    int GetValue() const { return mChecked ? 1 : 0; }

protected:
    ~UI_Checkbox() override;
    std::unique_ptr<Peer> UI_MakePeer() override;

private:
    class CheckboxPeer;

    bool mChecked;
};

}  // namespace controls
}  // namespace zelui
