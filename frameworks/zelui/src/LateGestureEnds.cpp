#include "LateGestureEnds.h"

#include <deque>
#include <memory>
#include <QCoreApplication>

#include "CallOut.h"

namespace zelui {

namespace {

struct End {
    boost::intrusive_ptr<ui::UI_Node> control;
    std::function<void()> tell;
};

// The application's event holds the end: what was not told when the application goes, goes with it.
std::deque<std::weak_ptr<End>>& GetWaiting() {
    static std::deque<std::weak_ptr<End>>* const waiting = new std::deque<std::weak_ptr<End>>;
    return *waiting;
}

void TellEnd(End& end) {
    const boost::intrusive_ptr<ui::UI_Node> control = std::move(end.control);
    end.control.reset();
    if (control && control->GetRefCount() > 1) CallOut("A control's handler", end.tell);
}

}  // namespace

void LateGestureEnds::Add(const boost::intrusive_ptr<ui::UI_Node>& control, const std::function<void()>& tell) {
    if (QCoreApplication::instance() == nullptr) return;
    const auto end = std::make_shared<End>(End{control, tell});
    GetWaiting().push_back(end);
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [end] { TellAll(); }, Qt::QueuedConnection);
}

void LateGestureEnds::TellAll() {
    while (!GetWaiting().empty()) {
        const std::shared_ptr<End> end = GetWaiting().front().lock();
        GetWaiting().pop_front();
        if (end) TellEnd(*end);
    }
}

}  // namespace zelui
