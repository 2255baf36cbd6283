#include "ThemeWatch.h"

#include <exception>
#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>

#include "ThemeChanges.h"

namespace zelui {
namespace ui {

namespace {

ThemeWatch* sWatch = nullptr;

void Report(const std::exception_ptr& thrown) {
    try {
        std::rethrow_exception(thrown);
    } catch (const std::exception& exception) {
        qWarning("zelui: a function for theme changes threw: %s", exception.what());
    } catch (...) {
        qWarning("zelui: a function for theme changes threw something that is no std::exception");
    }
}

// Qt posts a new palette to the windows; who is told of the change finds it in all of them.
void DeliverPalette() { QCoreApplication::sendPostedEvents(nullptr, QEvent::ApplicationPaletteChange); }

}  // namespace

ThemeWatch* ThemeWatch::Get() {
    if (!sWatch && qobject_cast<QApplication*>(QCoreApplication::instance())) sWatch = new ThemeWatch();
    return sWatch;
}

void ThemeWatch::Stop() {
    qRemovePostRoutine(&ThemeWatch::Stop);
    delete sWatch;
    sWatch = nullptr;
}

ThemeWatch::ThemeWatch() : mTold(QApplication::palette()) {
    qApp->installEventFilter(this);
    // A host may end its application without having made ours.
    qAddPostRoutine(&ThemeWatch::Stop);
}

ThemeWatch::~ThemeWatch() {
    mIsChoosing = true;
    mLook.TakeOff();
}

void ThemeWatch::Choose(Theme::Choice choice) {
    mChoice = choice;
    ChangeLook();
    const QPalette now = QApplication::palette();
    if (now == mTold) return;
    mTold = now;
    if (const std::exception_ptr thrown = TellThemeChanged()) std::rethrow_exception(thrown);
}

void ThemeWatch::ChangeLook() {
    const QScopedValueRollback<bool> choosing(mIsChoosing, true);
    if (mChoice == Theme::kLight || mChoice == Theme::kDark) {
        mLook.PutOn(mChoice == Theme::kDark);
    } else {
        mLook.TakeOff();
    }
    DeliverPalette();
}

bool ThemeWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp && !mIsChoosing && !mIsPosted) {
        // Not at once: a desktop changes style, palette and tool tips one after the other. Before the next painting.
        mIsPosted = true;
        QMetaObject::invokeMethod(
            this, [this] { LookForChange(); }, Qt::QueuedConnection);
    }
    return false;
}

void ThemeWatch::LookForChange() {
    mIsPosted = false;
    mLook.KeepToolTips();
    DeliverPalette();
    const QPalette now = QApplication::palette();
    if (now == mTold) return;
    mTold = now;
    if (const std::exception_ptr thrown = TellThemeChanged()) Report(thrown);
}

}  // namespace ui
}  // namespace zelui
