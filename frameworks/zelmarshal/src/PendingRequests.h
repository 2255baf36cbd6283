#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <zelmarshal/RPCClient.h>

namespace zelmarshal {

/// The requests of a client that have not ended, their deadlines, and the ids of those whose time was over before their
/// reply came. Any thread. Whoever takes a request out ends it, so that each ends once; the handlers run and die
/// outside the lock.
class PendingRequests {
public:
    typedef std::chrono::steady_clock::time_point TimePoint;

    struct Request {
        RPCClient::ReplyHandler onReply;
        RPCClient::ErrorHandler onError;
        std::optional<TimePoint> deadline = std::nullopt;
    };
    enum class Found { kOutstanding, kTimedOut, kUnknown };

    /// Ids count up from 1 and start anew at the end, over those still in use.
    int NewId();
    void Add(int id, const Request& request);
    /// Gives `id` a deadline. True when a timer has to be started for it.
    bool SetDeadline(int id, TimePoint deadline);

    /// Takes out the request `id`, or forgets that it has timed out.
    Found Take(int id, Request& request);
    /// The ids of the requests that have not ended, in the order of sending.
    std::vector<int> GetOutstanding() const;
    /// Takes out the first request whose deadline is not after `now`, and remembers its id; false when there is none.
    bool TakeTimedOut(TimePoint now, Request& request);
    /// A timer has run. True when the next has to be started, for `next`.
    bool StartTimerRound(TimePoint now, TimePoint& next);
    void Clear();

private:
    typedef std::map<int, Request> Requests;
    void TakeOut(Requests::iterator position, Request& request);

    mutable std::mutex mMutex;
    Requests mRequests;
    std::set<std::pair<TimePoint, int>> mDeadlines;
    std::optional<TimePoint> mTimer;
    std::set<int> mTimedOut;
    int mNewestId = 0;
};

}  // namespace zelmarshal
