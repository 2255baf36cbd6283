#include "PendingRequests.h"

#include <limits>

namespace zelmarshal {

int PendingRequests::NewId() {
    const std::lock_guard<std::mutex> lock(mMutex);
    do {
        mNewestId = mNewestId == std::numeric_limits<int>::max() ? 1 : mNewestId + 1;
    } while (mRequests.count(mNewestId) != 0 || mTimedOut.count(mNewestId) != 0);
    return mNewestId;
}

void PendingRequests::Add(int id, const Request& request) {
    const std::lock_guard<std::mutex> lock(mMutex);
    mRequests.emplace(id, request);
}

bool PendingRequests::SetDeadline(int id, TimePoint deadline) {
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto position = mRequests.find(id);
    if (position == mRequests.end()) return false;
    position->second.deadline = deadline;
    mDeadlines.emplace(deadline, id);
    if (mTimer && *mTimer <= deadline) return false;
    mTimer = deadline;
    return true;
}

void PendingRequests::TakeOut(Requests::iterator position, Request& request) {
    if (position->second.deadline) mDeadlines.erase({*position->second.deadline, position->first});
    std::swap(request, position->second);
    mRequests.erase(position);
}

PendingRequests::Found PendingRequests::Take(int id, Request& request) {
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto position = mRequests.find(id);
    if (position == mRequests.end()) return mTimedOut.erase(id) != 0 ? Found::kTimedOut : Found::kUnknown;
    TakeOut(position, request);
    return Found::kOutstanding;
}

std::vector<int> PendingRequests::GetOutstanding() const {
    const std::lock_guard<std::mutex> lock(mMutex);
    std::vector<int> ids;
    for (const auto& request : mRequests) ids.push_back(request.first);
    return ids;
}

bool PendingRequests::TakeTimedOut(TimePoint now, Request& request) {
    request = Request();
    const std::lock_guard<std::mutex> lock(mMutex);
    if (mDeadlines.empty() || mDeadlines.begin()->first > now) return false;
    const int id = mDeadlines.begin()->second;
    mTimedOut.insert(id);
    TakeOut(mRequests.find(id), request);
    return true;
}

bool PendingRequests::StartTimerRound(TimePoint now, TimePoint& next) {
    const std::lock_guard<std::mutex> lock(mMutex);
    const auto position = mDeadlines.lower_bound({now, std::numeric_limits<int>::max()});
    mTimer.reset();
    if (position == mDeadlines.end()) return false;
    next = position->first;
    mTimer = next;
    return true;
}

void PendingRequests::Clear() {
    Requests dropped;
    const std::lock_guard<std::mutex> lock(mMutex);
    dropped.swap(mRequests);
    mDeadlines.clear();
}

}  // namespace zelmarshal
