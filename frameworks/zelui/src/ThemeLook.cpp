#include "ThemeLook.h"

#include <QApplication>
#include <QStyleFactory>
#include <QToolTip>

#include "ThemePalettes.h"

namespace zelui {
namespace ui {

namespace {

// The others draw, in part at least, with what the desktop's own theme says.
bool ShowsPalettes(const QStyle& style) {
    return style.name() == QLatin1String("fusion") || style.name() == QLatin1String("windows");
}

}  // namespace

void ThemeLook::PutOn(bool dark) {
    if (!mIsOn) {
        // A palette remembers what was set in it: of the system's that is nothing, so that putting it back follows the
        // system again, and one of the host's comes back as the host set it.
        mFormerPalette = QApplication::palette();
        mFormerToolTips = QToolTip::palette();
        mIsOn = true;
    }
    UseStyleForPalettes();
    const QPalette palette = MakeThemePalette(dark);
    QApplication::setPalette(palette);
    mToolTips = palette;
    QToolTip::setPalette(mToolTips);
}

void ThemeLook::TakeOff() {
    if (!mIsOn) return;
    mIsOn = false;
    UseFormerStyle();
    QToolTip::setPalette(mFormerToolTips);
    QApplication::setPalette(mFormerPalette);
}

void ThemeLook::KeepToolTips() {
    if (!mIsOn || QToolTip::palette() == mToolTips) return;
    mFormerToolTips = QToolTip::palette();
    QToolTip::setPalette(mToolTips);
}

void ThemeLook::UseStyleForPalettes() {
    QStyle* const former = QApplication::style();
    // With a style sheet the host has a look of its own, and Qt's style is a wrapping that cannot be put back.
    if (ShowsPalettes(*former) || !qApp->styleSheet().isEmpty()) return;
    mStyle = QStyleFactory::create(QStringLiteral("Fusion"));
    if (!mStyle) return;
    // Qt deletes the style that it owns as soon as there is another.
    former->setParent(nullptr);
    mFormerStyle.reset(former);
    QApplication::setStyle(mStyle);
}

void ThemeLook::UseFormerStyle() {
    // Gone when the host has set another one since, which then stays.
    if (mStyle && mFormerStyle) QApplication::setStyle(mFormerStyle.release());
    mFormerStyle.reset();
}

}  // namespace ui
}  // namespace zelui
