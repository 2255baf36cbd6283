#pragma once

#include <zelui/OS_Window.h>

namespace zelui {
namespace ui {

/// A child window for content that is not the toolkit's, such as a plug-in's editor.
class ZELUI_API OS_ViewContainer : public OS_Window {
public:
    /// `takesFocus` makes the window itself a stop of the Tab key; without it the keyboard is the content's own affair.
    explicit OS_ViewContainer(bool takesFocus);

    bool UI_WantsKeyboardFocus() const override;

protected:
    ~OS_ViewContainer() override;

private:
    const bool mTakesFocus;
};

}  // namespace ui
}  // namespace zelui
