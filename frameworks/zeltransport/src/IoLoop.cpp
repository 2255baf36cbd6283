#include "IoLoop.h"

#include <vector>

namespace zeltransport {

namespace {
// Exactly one thread runs the loop: the library then skips waking others.
constexpr int kOneThread = 1;
}  // namespace

IoLoop::IoLoop() : mContext(kOneThread), mWork(boost::asio::make_work_guard(mContext)) {}

IoLoop::~IoLoop() = default;

void IoLoop::Add(const std::shared_ptr<Stoppable>& member) {
    mMembers.insert(member);
    if (mEnding) member->Stop();
}

void IoLoop::Remove(const std::shared_ptr<Stoppable>& member) { mMembers.erase(member); }

void IoLoop::Run() {
    std::uint64_t seen = 0;
    for (bool ended = false; !ended;) {
        mContext.run();
        mContext.restart();
        // Another thread may have posted between the end of the run and here; what was accepted must run.
        const std::lock_guard<std::mutex> lock(mMutex);
        ended = mEnded = mPosted == seen;
        seen = mPosted;
    }
}

void IoLoop::RequestEnd() {
    Post([this] { StopMembers(); });
}

void IoLoop::StopMembers() {
    mEnding = true;
    const std::vector<std::shared_ptr<Stoppable>> members(mMembers.begin(), mMembers.end());
    for (const std::shared_ptr<Stoppable>& member : members) member->Stop();
    mWork.reset();
}

}  // namespace zeltransport
