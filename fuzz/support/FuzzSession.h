#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <zeltransport/Session.h>

namespace zelfuzz {

/// A session without a network: the fuzzer is the peer, and the I/O thread. What the program sends is kept.
class FuzzSession : public zeltransport::Session {
public:
    void Send(std::string frame) override {
        if (mIsOpen) mSent.push_back(std::move(frame));
    }
    void Close() override { mIsOpen = false; }
    bool IsOpen() const override { return mIsOpen; }
    void SetConnectionClosedHandler(const ClosedHandler& handler) override { mOnClosed = handler; }
    void SetProtocolHandlers(const MessageHandler& onMessage, const ClosedHandler& onClosed) override {
        mOnMessage = onMessage;
        mOnProtocolClosed = onClosed;
    }
    bool RunSoon(const boost::function<void()>& function) override {
        mPosted.push_back(function);
        return true;
    }
    /// Nothing here takes time, so what waits for a time is what is never run.
    void RunAfter(std::chrono::milliseconds, const boost::function<void()>&) override {}

    /// A frame has come from the peer.
    void Deliver(std::string_view frame) {
        if (!mIsOpen) return;
        // In memory of its own, so that reading beyond its end is seen.
        const std::vector<char> bytes(frame.begin(), frame.end());
        const MessageHandler handler = mOnMessage;
        if (handler) handler(bytes.data(), bytes.size());
        RunPosted();
    }
    /// The connection has closed.
    void End() {
        mIsOpen = false;
        RunPosted();
        const ClosedHandler onProtocolClosed = std::exchange(mOnProtocolClosed, {});
        const ClosedHandler onClosed = std::exchange(mOnClosed, {});
        if (onProtocolClosed) onProtocolClosed();
        if (onClosed) onClosed();
        mOnMessage.clear();
        RunPosted();
    }
    std::vector<std::string> TakeSent() { return std::exchange(mSent, {}); }

private:
    void RunPosted() {
        while (!mPosted.empty()) {
            const boost::function<void()> function = std::move(mPosted.front());
            mPosted.pop_front();
            function();
        }
    }

    bool mIsOpen = true;
    MessageHandler mOnMessage;
    ClosedHandler mOnProtocolClosed;
    ClosedHandler mOnClosed;
    std::deque<boost::function<void()>> mPosted;
    std::vector<std::string> mSent;
};

}  // namespace zelfuzz
