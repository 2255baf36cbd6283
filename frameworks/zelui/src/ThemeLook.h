#pragma once

#include <memory>

#include <QPalette>
#include <QPointer>
#include <QStyle>

namespace zelui {
namespace ui {

/// Puts the light or the dark look over what the application had, and takes it off again: palette, tool tips and, where
/// the style would not show a palette, the style. Main thread, while there is a QApplication.
class ThemeLook {
public:
    void PutOn(bool dark);
    void TakeOff();
    bool IsOn() const { return mIsOn; }
    /// After a change of the system: tool tips have got the system's colours then, which are kept for TakeOff.
    void KeepToolTips();

private:
    void UseStyleForPalettes();
    void UseFormerStyle();

    bool mIsOn = false;
    QPalette mFormerPalette;
    QPalette mFormerToolTips;
    QPalette mToolTips;
    std::unique_ptr<QStyle> mFormerStyle;
    QPointer<QStyle> mStyle;
};

}  // namespace ui
}  // namespace zelui
