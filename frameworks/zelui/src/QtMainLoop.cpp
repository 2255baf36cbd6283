#include "QtMainLoop.h"

#include "PlatformChoice.h"

#include <algorithm>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimerEvent>

namespace zelui {

namespace {

// Up to this interval the few milliseconds by which Qt may move a coarse timer would be heard and seen.
const int kPreciseUpTo = 50;

QEvent::Type GetCallType() {
    static const QEvent::Type type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

}  // namespace

QtMainLoop::QtMainLoop() = default;

QtMainLoop::~QtMainLoop() { DropPosted(); }

void QtMainLoop::DropPosted() {
    QCoreApplication::removePostedEvents(this, GetCallType());
    std::deque<Function> dropped;
    {
        const std::lock_guard lock(mPostedMutex);
        dropped.swap(mPosted);
    }
    // They go outside the lock: what a function holds may post when it is destroyed.
}

// One event for each call: those posted meanwhile then wait for the next round, and a loop that a call runs goes on
// with the calls behind it in their order.
void QtMainLoop::Post(const Function& function) {
    if (!function) return;
    {
        const std::lock_guard lock(mPostedMutex);
        mPosted.push_back(function);
    }
    QCoreApplication::postEvent(this, new QEvent(GetCallType()));
}

bool QtMainLoop::event(QEvent* event) {
    if (event->type() != GetCallType()) return QObject::event(event);
    Function function;
    bool isLast = true;
    {
        const std::lock_guard lock(mPostedMutex);
        if (mPosted.empty()) return true;
        function.swap(mPosted.front());
        mPosted.pop_front();
        isLast = mPosted.empty();
    }
    // Qt under GLib forgets, once it has begun to deliver events, that there are more: the loop of a dialog opened by
    // this call would sleep on those behind it.
    if (!isLast) QAbstractEventDispatcher::instance()->wakeUp();
    function();
    // Without GLib it sleeps, once the events are delivered, in a loop that the call has ended if the call has also let
    // events happen since.
    QAbstractEventDispatcher::instance()->wakeUp();
    return true;
}

zelcore::threads::MainLoop::Id QtMainLoop::StartTimer(int milliseconds, const Function& function) {
    if (!function) return 0;
    const int interval = std::max(milliseconds, 1);
    const int qtTimer = startTimer(interval, interval <= kPreciseUpTo ? Qt::PreciseTimer : Qt::CoarseTimer);
    if (qtTimer == 0) return 0;
    const Id id = ++mLastId;
    mTimers.emplace(id, Timer{qtTimer, function});
    mTimerOfQtTimer.emplace(qtTimer, id);
    return id;
}

void QtMainLoop::StopTimer(Id timer) {
    const auto found = mTimers.find(timer);
    if (found == mTimers.end()) return;
    killTimer(found->second.qtTimer);
    mTimerOfQtTimer.erase(found->second.qtTimer);
    mTimers.erase(found);
}

void QtMainLoop::timerEvent(QTimerEvent* event) {
    const auto id = mTimerOfQtTimer.find(event->timerId());
    if (id == mTimerOfQtTimer.end()) return;
    // A copy, because the function may stop its own timer.
    const Function function = mTimers.at(id->second).function;
    function();
}

zelcore::threads::MainLoop::Id QtMainLoop::WatchFileDescriptor(int descriptor, const Function& onReadable) {
    if (descriptor < 0 || !onReadable || !WatchesDescriptors()) return 0;
    const Id id = ++mLastId;
    mWatches.emplace(id, Watch{descriptor, onReadable});
    AddToNotifier(descriptor, id);
    return id;
}

void QtMainLoop::AddToNotifier(int descriptor, Id watch) {
    auto found = mNotifiers.find(descriptor);
    if (found == mNotifiers.end()) {
        QSocketNotifier* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, [this, descriptor] { OnReadable(descriptor); });
        found = mNotifiers.emplace(descriptor, Notifier{notifier, {}}).first;
    }
    found->second.watches.push_back(watch);
}

void QtMainLoop::StopWatching(Id watch) {
    const auto found = mWatches.find(watch);
    if (found == mWatches.end()) return;
    const auto shared = mNotifiers.find(found->second.descriptor);
    mWatches.erase(found);
    std::erase(shared->second.watches, watch);
    if (!shared->second.watches.empty()) return;
    // Off at once, as the caller may close the descriptor now; deleted later, as this may be its own signal.
    shared->second.notifier->setEnabled(false);
    shared->second.notifier->deleteLater();
    mNotifiers.erase(shared);
}

void QtMainLoop::OnReadable(int descriptor) {
    const auto shared = mNotifiers.find(descriptor);
    if (shared == mNotifiers.end()) return;
    // Any of the functions may stop any of the watches.
    const std::vector<Id> watches = shared->second.watches;
    for (const Id watch : watches) {
        const auto found = mWatches.find(watch);
        if (found == mWatches.end()) continue;
        const Function function = found->second.function;
        function();
    }
}

void QtMainLoop::Run() {
    QEventLoop loop;
    mRunning.push_back(&loop);
    loop.exec();
    std::erase(mRunning, &loop);
}

void QtMainLoop::Quit() {
    for (auto loop = mRunning.rbegin(); loop != mRunning.rend(); ++loop) {
        // One that has been told to end but waits for a loop inside it counts as ended.
        if (!(*loop)->isRunning()) continue;
        (*loop)->quit();
        return;
    }
}

}  // namespace zelui
