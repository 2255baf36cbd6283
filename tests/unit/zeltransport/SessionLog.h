#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <zeltransport/Session.h>

namespace zeltests {

/// Writes down what a session tells its handlers. The handlers may outlive it.
class SessionLog {
public:
    SessionLog() = default;
    explicit SessionLog(zeltransport::Session& session) { Attach(session); }

    void Attach(zeltransport::Session& session) {
        AttachProtocol(session);
        AttachClosed(session);
    }
    void AttachProtocol(zeltransport::Session& session) {
        const std::shared_ptr<State> state = mState;
        session.SetProtocolHandlers(
            [state](const char* bytes, std::size_t size) { state->Add(state->frames, std::string(bytes, size)); },
            [state] { state->Add(state->closings, "protocol"); });
    }
    void AttachClosed(zeltransport::Session& session) {
        const std::shared_ptr<State> state = mState;
        session.SetConnectionClosedHandler([state] { state->Add(state->closings, "owner"); });
    }

    std::vector<std::string> GetFrames() const { return mState->Get(mState->frames); }
    /// "protocol" and "owner", in the order in which their closed handlers ran.
    std::vector<std::string> GetClosings() const { return mState->Get(mState->closings); }
    std::vector<std::thread::id> GetThreads() const { return mState->Get(mState->threads); }
    /// True when nobody but this log holds what the handlers hold.
    bool IsReleased() const { return mState.use_count() == 1; }

private:
    struct State {
        std::mutex mutex;
        std::vector<std::string> frames;
        std::vector<std::string> closings;
        std::vector<std::thread::id> threads;

        void Add(std::vector<std::string>& list, const std::string& text) {
            const std::lock_guard<std::mutex> lock(mutex);
            list.push_back(text);
            threads.push_back(std::this_thread::get_id());
        }
        template <typename List>
        List Get(const List& list) {
            const std::lock_guard<std::mutex> lock(mutex);
            return list;
        }
    };
    const std::shared_ptr<State> mState = std::make_shared<State>();
};

}  // namespace zeltests
