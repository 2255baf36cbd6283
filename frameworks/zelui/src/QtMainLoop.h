#pragma once

#include <deque>
#include <mutex>
#include <QObject>
#include <unordered_map>
#include <vector>

#include <zelcore/MainLoop.h>

class QEventLoop;
class QSocketNotifier;

namespace zelui {

/// The main loop of zelcore::threads on Qt's event loop. Works under whatever runs that loop: its own Run, the host's
/// QApplication::exec, or the loop of a dialog. Made and destroyed on the thread of the application object, while that
/// exists; what is still posted is then dropped.
class QtMainLoop final : private QObject, public zelcore::threads::MainLoop {
public:
    QtMainLoop();
    ~QtMainLoop() override;

    /// Drops what is posted without calling it. Main thread.
    void DropPosted();

    void Post(const Function& function) override;
    Id StartTimer(int milliseconds, const Function& function) override;
    void StopTimer(Id timer) override;
    Id WatchFileDescriptor(int descriptor, const Function& onReadable) override;
    void StopWatching(Id watch) override;
    void Run() override;
    void Quit() override;

private:
    struct Timer {
        int qtTimer;
        Function function;
    };
    struct Watch {
        int descriptor;
        Function function;
    };
    /// Qt wants one notifier per descriptor; those who watch the same one share it.
    struct Notifier {
        QSocketNotifier* notifier;
        std::vector<Id> watches;
    };

    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void AddToNotifier(int descriptor, Id watch);
    void OnReadable(int descriptor);

    std::mutex mPostedMutex;
    std::deque<Function> mPosted;
    Id mLastId = 0;
    std::unordered_map<Id, Timer> mTimers;
    std::unordered_map<int, Id> mTimerOfQtTimer;
    std::unordered_map<Id, Watch> mWatches;
    std::unordered_map<int, Notifier> mNotifiers;
    std::vector<QEventLoop*> mRunning;
};

}  // namespace zelui
