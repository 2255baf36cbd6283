#pragma once

#include <QObject>
#include <QPalette>

#include <zelui/Theme.h>

#include "ThemeLook.h"

namespace zelui {
namespace ui {

/// Keeps the choice of the theme and notices every change of the application's colours, also those of the desktop and
/// of the host. Several changes before the event loop is reached are one. Lives from the first need, when there is a
/// QApplication, to Stop or to that application's end. Main thread.
class ThemeWatch final : public QObject {
public:
    /// Makes it when there is none yet; null without a QApplication.
    static ThemeWatch* Get();
    /// Takes off what was chosen and tells nobody. Harmless when there is none.
    static void Stop();

    /// Throws what the first of those threw whom it told.
    void Choose(Theme::Choice choice);
    Theme::Choice GetChoice() const { return mChoice; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ThemeWatch();
    ~ThemeWatch() override;

    void ChangeLook();
    void LookForChange();

    Theme::Choice mChoice = Theme::kSystem;
    ThemeLook mLook;
    QPalette mTold;
    bool mIsChoosing = false;
    bool mIsPosted = false;
};

}  // namespace ui
}  // namespace zelui
