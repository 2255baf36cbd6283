#include "Connection.h"

#include "CallHandler.h"

#include <utility>

#include <boost/asio/buffer.hpp>

namespace zeltransport {

using boost::asio::ip::tcp;
using boost::system::error_code;

namespace {

// What may wait for a protocol that is not there yet: one frame of the largest size always fits.
constexpr std::size_t kMaxUnheardSize = kMaxFrameSize + kFrameHeaderSize;

}  // namespace

Connection::Connection(const std::shared_ptr<IoLoop>& loop) : mLoop(loop), mSocket(loop->GetContext()) {}

void Connection::Send(std::string frame) {
    const std::size_t size = kFrameHeaderSize + frame.size();
    bool accepted = frame.size() <= kMaxFrameSize;
    bool flushIsDue = false;
    if (accepted) {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (!mOpen) return;
        accepted = mQueuedSize + size <= kMaxQueuedSize;
        if (accepted) {
            mQueuedSize += size;
            flushIsDue = mOutgoing.empty();
            mOutgoing.push_back(std::move(frame));
        }
    }
    if (!accepted) return Close();
    if (mLoop->IsCurrentThread()) {
        Flush();
    } else if (flushIsDue) {
        mLoop->Post([self = shared_from_this()] { self->Flush(); });
    }
}

void Connection::Close() { BeginClose(true); }

bool Connection::IsOpen() const {
    const std::lock_guard<std::mutex> lock(mMutex);
    return mOpen;
}

void Connection::SetClosedHandler(const Session::ClosedHandler& handler) {
    Session::ClosedHandler old;
    bool late = false;
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        old.swap(mOnClosed);
        if (mClosedRan) return;
        mOnClosed = handler;
        late = mFinished;
    }
    if (late) HandleLateHandlers();
}

void Connection::SetProtocolHandlers(const Session::MessageHandler& onMessage, const Session::ClosedHandler& onClosed) {
    std::shared_ptr<const Session::MessageHandler> message;
    if (onMessage) message = std::make_shared<const Session::MessageHandler>(onMessage);
    Session::ClosedHandler closed;
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mOnMessage.swap(message);
        mOnProtocolClosed.swap(closed);
        if (!mProtocolClosedRan) mOnProtocolClosed = onClosed;
    }
    HandleLateHandlers();
}

void Connection::HandleLateHandlers() {
    const bool posted = mLoop->Post([self = shared_from_this()] {
        self->DeliverFrames();
        self->RunClosedHandlers();
        self->ContinueReading();
    });
    if (posted) return;
    // The loop has ended: nothing will run them, and keeping them could keep this session alive through them.
    bool unused = false;
    Take(mOnProtocolClosed, unused);
    Take(mOnClosed, unused);
    std::shared_ptr<const Session::MessageHandler> message;
    const std::lock_guard<std::mutex> lock(mMutex);
    message.swap(mOnMessage);
}

bool Connection::RunSoon(const boost::function<void()>& function) {
    return mLoop->Post([self = shared_from_this(), function = function] { CallHandler(function); });
}

void Connection::RunAfter(std::chrono::milliseconds delay, const boost::function<void()>& function) {
    mLoop->Post([self = shared_from_this(), delay, function = function] { self->StartTimer(delay, function); });
}

void Connection::StartTimer(std::chrono::milliseconds delay, const boost::function<void()>& function) {
    if (!IsOpen()) return;
    const auto timer = std::make_shared<boost::asio::steady_timer>(mLoop->GetContext(), delay);
    mTimers.insert(timer);
    timer->async_wait([self = shared_from_this(), timer, function = function](const error_code& error) {
        self->mTimers.erase(timer);
        if (!error && self->IsOpen()) CallHandler(function);
    });
}

void Connection::Enter(const std::function<void()>& cancel) {
    mCancelConnecting = cancel;
    mLoop->Add(shared_from_this());
}

void Connection::Adopt(tcp::socket&& socket) {
    if (!IsOpen()) return;
    mCancelConnecting = nullptr;
    mSocket = std::move(socket);
    error_code error;
    mSocket.non_blocking(true, error);
    // Requests and replies are small and wait for one another; collecting them only adds a delay to each.
    if (!error) mSocket.set_option(tcp::no_delay(true), error);
    if (error) return Close();
    mConnected = true;
    Flush();
    ContinueReading();
}

void Connection::BeginClose(bool discardReceived) {
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mDiscardReceived = mDiscardReceived || discardReceived;
        if (!mOpen) return;
        mOpen = false;
    }
    mLoop->Post([self = shared_from_this()] { self->Finish(); });
}

void Connection::Finish() {
    Flush();
    if (mCancelConnecting) mCancelConnecting();
    mCancelConnecting = nullptr;
    for (const auto& timer : mTimers) timer->cancel();
    error_code ignored;
    mSocket.close(ignored);
    mConnected = false;
    mWriter.Clear();
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mFinished = true;
        mOutgoing.clear();
        mQueuedSize = 0;
        if (mDiscardReceived) mReader.Clear();
    }
    RunClosedHandlers();
    mLoop->Remove(shared_from_this());
}

Session::ClosedHandler Connection::Take(Session::ClosedHandler& slot, bool& ran) {
    Session::ClosedHandler handler;
    const std::lock_guard<std::mutex> lock(mMutex);
    handler.swap(slot);
    if (handler) ran = true;
    return handler;
}

void Connection::RunClosedHandlers() {
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        if (!mFinished) return;
    }
    if (const Session::ClosedHandler handler = Take(mOnProtocolClosed, mProtocolClosedRan)) CallHandler(handler);
    if (const Session::ClosedHandler handler = Take(mOnClosed, mClosedRan)) CallHandler(handler);
    std::shared_ptr<const Session::MessageHandler> message;
    const std::lock_guard<std::mutex> lock(mMutex);
    message.swap(mOnMessage);
}

bool Connection::IsPaused() const {
    bool mayDeliver = false;
    return mReader.GetBufferedSize() > kMaxUnheardSize && !GetMessageHandler(mayDeliver);
}

void Connection::ContinueReading() {
    if (mReading || !mConnected || !IsOpen() || IsPaused()) return;
    mReading = true;
    mSocket.async_read_some(
        boost::asio::buffer(mChunk),
        [self = shared_from_this()](const error_code& error, std::size_t size) { self->OnRead(error, size); });
}

void Connection::OnRead(const error_code& error, std::size_t size) {
    mReading = false;
    if (error) return BeginClose(false);
    mReader.Append(mChunk.data(), size);
    DeliverFrames();
    ContinueReading();
}

std::shared_ptr<const Session::MessageHandler> Connection::GetMessageHandler(bool& mayDeliver) const {
    const std::lock_guard<std::mutex> lock(mMutex);
    mayDeliver = !mDiscardReceived;
    return mOnMessage;
}

void Connection::DeliverFrames() {
    for (;;) {
        bool mayDeliver = false;
        const auto handler = GetMessageHandler(mayDeliver);
        if (!mayDeliver) return;
        std::string_view frame;
        const FrameReader::Status status = mReader.GetFront(frame);
        if (status == FrameReader::Status::kTooLong) return Close();
        if (status == FrameReader::Status::kIncomplete || !handler) return;
        mReader.Pop();
        if (!CallHandler([&] { (*handler)(frame.data(), frame.size()); })) return Close();
    }
}

void Connection::Flush() {
    if (!mConnected) return;
    mTaken.clear();
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mTaken.swap(mOutgoing);
        if (mWriteFailed) mQueuedSize = 0;
    }
    if (mWriteFailed) return;
    for (std::string& frame : mTaken) mWriter.Push(std::move(frame));
    if (mWaitingToWrite) return;
    error_code error;
    const std::size_t gone = mWriter.WriteTo(mSocket, error);
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        mQueuedSize -= gone;
    }
    if (error && error != boost::asio::error::would_block) return OnWriteFailed(error);
    if (!error) return;
    mWaitingToWrite = true;
    mSocket.async_wait(tcp::socket::wait_write, [self = shared_from_this()](const error_code& waitError) {
        self->mWaitingToWrite = false;
        if (!waitError) self->Flush();
    });
}

void Connection::OnWriteFailed(const error_code& error) {
    mWriteFailed = true;
    mWriter.Clear();
    // A peer that has gone may have said something first: reading finds that, and then the end.
    const bool peerIsGone = error == boost::asio::error::broken_pipe || error == boost::asio::error::connection_reset;
    if (!peerIsGone || (!mReading && IsPaused())) Close();
}

}  // namespace zeltransport
