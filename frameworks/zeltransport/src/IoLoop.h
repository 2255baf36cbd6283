#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <utility>

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>

namespace zeltransport {

/// What lives on a loop and has to be ended with it.
class Stoppable {
public:
    virtual ~Stoppable() = default;
    /// On the loop's thread; ends whatever is under way soon, and takes the object out of its loop.
    virtual void Stop() = 0;
};

/// The I/O thread's loop. Shared by the transport, its thread and everything that lives on it, so that it outlives them
/// all, also when the transport goes first.
class IoLoop {
public:
    IoLoop();
    ~IoLoop();
    IoLoop(const IoLoop&) = delete;
    IoLoop& operator=(const IoLoop&) = delete;

    boost::asio::io_context& GetContext() { return mContext; }
    bool IsCurrentThread() { return mContext.get_executor().running_in_this_thread(); }

    /// Queues `function` for the loop's thread. Any thread. False, and nothing queued, when the loop has ended: what
    /// waited in a loop that nobody runs would hold its captures for ever.
    template <typename Function>
    bool Post(Function&& function) {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (mEnded) return false;
        ++mPosted;
        boost::asio::post(mContext, std::forward<Function>(function));
        return true;
    }

    /// Holds `member` until it is removed. Loop thread.
    void Add(const std::shared_ptr<Stoppable>& member);
    void Remove(const std::shared_ptr<Stoppable>& member);

    /// The thread's whole work: returns when the end was asked for and everything accepted has run.
    void Run();
    /// Asks for the end: stops all members. Any thread; returns at once.
    void RequestEnd();

private:
    void StopMembers();

    boost::asio::io_context mContext;
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> mWork;
    std::set<std::shared_ptr<Stoppable>> mMembers;
    bool mEnding = false;
    std::mutex mMutex;
    std::uint64_t mPosted = 0;
    bool mEnded = false;
};

}  // namespace zeltransport
