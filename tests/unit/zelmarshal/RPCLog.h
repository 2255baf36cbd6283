#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>
#include <zelcore/Serialization.h>
#include <zelmarshal/RPCClient.h>

namespace zeltests {

/// Writes down how requests end: "reply <id> <value as JSON>" or "error <code>".
class RPCLog {
public:
    zelmarshal::RPCClient::ReplyHandler OnReply() const {
        return [state = mState](const boost::shared_ptr<boost::any>& reply, int id) {
            const auto value = zelcore::serialization::GetVariantInObject(reply, "value");
            state->Add("reply " + std::to_string(id) + " " +
                       (value ? zelcore::serialization::ToJson(*value) : std::string("without value")));
        };
    }
    zelmarshal::RPCClient::ErrorHandler OnError() const {
        return [state = mState](int code, const std::string&) { state->Add("error " + std::to_string(code)); };
    }
    /// Calls `method` with both handlers of this log.
    int Call(zelmarshal::RPCClient& client, const std::string& method, const boost::any& parameters = boost::any(),
             int timeout = 0) const {
        boost::any array = parameters;
        if (array.empty()) array = zelcore::serialization::Array();
        return client.SendRequest(zelcore::serialization::BuildCall(method, array), OnReply(), OnError(), timeout);
    }
    void Add(const std::string& line) const { mState->Add(line); }

    std::vector<std::string> GetLines() const {
        const std::lock_guard<std::mutex> lock(mState->mutex);
        return mState->lines;
    }
    std::thread::id GetThread() const {
        const std::lock_guard<std::mutex> lock(mState->mutex);
        return mState->thread;
    }
    /// True when no handler of this log is kept by anybody.
    bool IsReleased() const { return mState.use_count() == 1; }

private:
    struct State {
        std::mutex mutex;
        std::vector<std::string> lines;
        std::thread::id thread;
        void Add(const std::string& line) {
            const std::lock_guard<std::mutex> lock(mutex);
            lines.push_back(line);
            thread = std::this_thread::get_id();
        }
    };
    const std::shared_ptr<State> mState = std::make_shared<State>();
};

inline boost::any MakeParameters(const std::vector<boost::any>& values) {
    boost::any array;
    for (const boost::any& value : values) zelcore::serialization::AppendToArray(array, value);
    return array;
}

}  // namespace zeltests
