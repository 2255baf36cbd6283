#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <zelui/QtBridge.h>
#include <zelui/UI_NodeManager.h>
#include <zelui/UI_SubView.h>

#include "DialogTools.h"

namespace zeltests {

/// Keeps what was called on a node, and calls what a test has put in.
class TestNode : public zelui::ui::UI_SubView {
public:
    typedef zelcore::geom::RectF RectF;

    std::vector<int> changes;
    std::vector<RectF> sizes;
    int disabledChanges = 0;
    int draws = 0;
    std::vector<zelui::ui::FocusChangeReason> reasons;
    std::vector<zelui::ui::KeyboardEvent> keys;
    std::vector<long> ticks;

    bool wantsFocus = false;
    bool stopsTab = true;
    bool refusesLeftOver = false;
    std::function<void(int)> onChanged;
    std::function<void(const RectF&)> onSized;
    std::function<void()> onDisabledChanged;
    std::function<void(zelui::drawbot::Drawbot&)> onDraw;
    std::function<void(zelui::ui::FocusChangeReason)> onFocus;
    std::function<bool(const zelui::ui::KeyboardEvent&)> onKey;
    std::function<bool(long)> onTick;

    int Count(zelui::ui::NodeChange change) const {
        return static_cast<int>(std::count(changes.begin(), changes.end(), static_cast<int>(change)));
    }
    void Forget() {
        changes.clear();
        sizes.clear();
        disabledChanges = 0;
        draws = 0;
        reasons.clear();
    }

    bool UI_WantsKeyboardFocus() const override { return wantsFocus; }
    bool UI_WantsKeyboardFocusFromAdvance() const override { return wantsFocus && stopsTab; }
    bool UI_GainKeyboardFocus(zelui::ui::FocusChangeReason reason) override {
        reasons.push_back(reason);
        if (onFocus) onFocus(reason);
        if (refusesLeftOver && reason == zelui::ui::kFocusLeftOver) return false;
        return UI_SubView::UI_GainKeyboardFocus(reason);
    }
    bool UI_DoKeyboardEvent(const zelui::ui::KeyboardEvent& event) override {
        keys.push_back(event);
        return onKey && onKey(event);
    }
    bool UI_DoTimerNotify(long id) override {
        ticks.push_back(id);
        return !onTick || onTick(id);
    }
    void UI_Draw(zelui::drawbot::Drawbot& drawbot) override {
        ++draws;
        if (onDraw) onDraw(drawbot);
    }

protected:
    void UI_NodeChanged(int change) override {
        UI_SubView::UI_NodeChanged(change);
        changes.push_back(change);
        if (onChanged) onChanged(change);
    }
    void UI_SizeChanged(const RectF& frame) override {
        UI_SubView::UI_SizeChanged(frame);
        sizes.push_back(frame);
        changes.push_back(-1);
        if (onSized) onSized(frame);
    }
    void UI_DisabledStateChanged() override {
        UI_SubView::UI_DisabledStateChanged();
        ++disabledChanges;
        if (onDisabledChanged) onDisabledChanged();
    }
};

typedef boost::intrusive_ptr<TestNode> TestNodePtr;

/// A shown node, the last child of `parent` when there is one.
inline TestNodePtr MakeNode(const zelcore::geom::RectF& frame, const TestNodePtr& parent = nullptr) {
    const TestNodePtr node(new TestNode);
    node->UI_SetLocalRectF(frame);
    node->UI_Show(true);
    if (parent) parent->ChildPushBack(node);
    return node;
}

/// Has everything handled that is waiting to be.
inline void Settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

inline void ShowActive(QWidget& window) {
    window.show();
    window.activateWindow();
    if (!ProcessUntil([&window] { return window.isActiveWindow(); })) ADD_FAILURE() << "the window is not active";
    Settle();
}

inline QWidget* WidgetOf(const zelui::ui::UI_Node& node) { return zelui::qt::GetWidget(node); }

inline void SendKeyTo(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                      const QString& text = QString()) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(widget, &event);
}

}  // namespace zeltests
