#pragma once

#include <memory>
#include <string>
#include <vector>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <gtest/gtest.h>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <zelui/QtBridge.h>
#include <zelui/UI_ControlView.h>
#include <zelui/UI_SubView.h>

#include "DialogTools.h"
#include "support/accessibility/SpokenText.h"

namespace zeltests {

/// A window with a long list in it for controls to stand in, shown and active.
class ControlStage {
public:
    ControlStage() : mRoot(new zelui::ui::UI_SubView), mArea(std::make_unique<QScrollArea>()) {
        mRoot->UI_SetLocalRectF({0, 0, 380, 20000});
        mArea->setWidget(new zelui::qt::NodeWidget(mRoot));
        mArea->resize(420, 300);
        mArea->show();
        mArea->activateWindow();
        if (!ProcessUntil([this] { return mArea->isActiveWindow(); })) ADD_FAILURE() << "the window is not active";
    }

    const boost::intrusive_ptr<zelui::ui::UI_SubView>& GetRoot() const { return mRoot; }
    QScrollArea& GetArea() const { return *mArea; }
    QWidget& GetNodeWidget() const { return *mArea->widget(); }

    /// Adds a control to the list, shown; its widget is there.
    template <typename Control>
    boost::intrusive_ptr<Control> Add(Control* control, const zelcore::geom::RectF& frame) {
        const boost::intrusive_ptr<Control> held(control);
        held->UI_SetLocalRectF(frame);
        held->UI_Show(true);
        mRoot->ChildPushBack(held);
        EXPECT_TRUE(ProcessUntil([&] { return GetWidget(*held) != nullptr && GetWidget(*held)->isVisible(); }));
        return held;
    }

    template <typename Widget = QWidget>
    static Widget* GetWidget(const zelui::ui::UI_Node& node) {
        return static_cast<Widget*>(zelui::qt::GetWidget(node));
    }

    /// Scrolls far enough for the widget to be let go of, and back to another one.
    void ScrollAwayAndBack(const zelui::ui::UI_Node& node) {
        mArea->setFocus();
        mArea->verticalScrollBar()->setValue(mArea->verticalScrollBar()->maximum());
        EXPECT_TRUE(ProcessUntil([&] { return GetWidget(node) == nullptr; }));
        mArea->verticalScrollBar()->setValue(0);
        EXPECT_TRUE(ProcessUntil([&] { return GetWidget(node) != nullptr; }));
    }

private:
    boost::intrusive_ptr<zelui::ui::UI_SubView> mRoot;
    std::unique_ptr<QScrollArea> mArea;
};

/// A function as controls take it.
template <typename Function, typename Callable>
boost::shared_ptr<Function> Handler(Callable callable) {
    return boost::make_shared<Function>(callable);
}

/// What screen readers call it.
inline QString GetAccessibleName(const zelui::ui::UI_Node& node) { return GetSpokenName(*zelui::qt::GetWidget(node)); }

inline void SendKey(QWidget* widget, QEvent::Type type, int key, bool repeat = false,
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(type, key, modifiers, QString(), repeat);
    QCoreApplication::sendEvent(widget, &event);
}

/// Turns the wheel over the middle of a widget as the window system does.
inline void TurnWheel(QWidget* widget, int angle) {
    const QPointF middle = widget->rect().center();
    const QPoint global = widget->mapToGlobal(middle.toPoint());
    QWheelEvent event(middle, global, QPoint(), QPoint(0, angle), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    // Only those of the window system go on to the widgets round one that does not want them.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}

/// Waits for the end of a widget that was let go of.
inline bool WaitUntilGone(const QPointer<QWidget>& widget) {
    return ProcessUntil([&widget] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !widget;
    });
}

/// Has the focus as somebody who came to the control with the Tab key.
inline void TabTo(zelui::ui::UI_Node& node) {
    for (int i = 0; i < 100 && !node.UI_HasKeyboardFocus(false); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(node.UI_HasKeyboardFocus(false));
}

}  // namespace zeltests
