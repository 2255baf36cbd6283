#include "SoundDevice.h"

#include <chrono>
#include <optional>
#include <vector>

#include <QAudioDevice>
#include <QAudioSink>
#include <QMediaDevices>
#include <QThread>

#include "EngineStream.h"
#include "SoundEngine.h"

namespace tessaly {

namespace {

constexpr int kBufferMilliseconds = 150;
// A device that has not asked for sound for so long is gone, even where nobody says so.
constexpr std::chrono::seconds kPatience(2);
// Asked so often at least meanwhile, or it is this program that stood still.
constexpr int kFewestLooks = 10;

std::optional<SampleWriter::Kind> FindKind(QAudioFormat::SampleFormat format) {
    switch (format) {
        case QAudioFormat::UInt8:
            return SampleWriter::kUnsigned8;
        case QAudioFormat::Int16:
            return SampleWriter::kSigned16;
        case QAudioFormat::Int32:
            return SampleWriter::kSigned32;
        case QAudioFormat::Float:
            return SampleWriter::kFloat;
        default:
            return std::nullopt;
    }
}

/// The form in which a device takes the sound best; not valid where there is none.
QAudioFormat ChooseFormat(const QAudioDevice& device, int channelCount, int sampleRate) {
    const QAudioFormat preferred = device.preferredFormat();
    QAudioFormat format;
    format.setSampleRate(sampleRate);
    for (const int channels : {channelCount, preferred.channelCount(), 2, 1}) {
        format.setChannelCount(channels);
        for (const QAudioFormat::SampleFormat samples :
             {QAudioFormat::Float, QAudioFormat::Int16, QAudioFormat::Int32, QAudioFormat::UInt8}) {
            format.setSampleFormat(samples);
            if (format.isValid() && device.isFormatSupported(format)) return format;
        }
    }
    return {};
}

}  // namespace

/// A device at work. The sink lives on the sound thread, which it is made and ended on.
class SoundDevice::Impl {
public:
    Impl(SoundEngine& engine, const QAudioDevice& device, const QAudioFormat& format);
    ~Impl();

    bool IsStarted() const { return mIsStarted; }
    int GetBufferedFrames() const { return mBufferedFrames; }
    bool HasFailed();

private:
    void StartSink(const QAudioDevice& device, const QAudioFormat& format);
    void OnStateChanged(QAudio::State state);

    SoundEngine& mEngine;
    EngineStream mStream;
    QThread mThread;
    QObject mOnThread;  ///< what is called through it is called on the thread
    std::unique_ptr<QAudioSink> mSink;
    bool mIsStarted;
    int mBufferedFrames;
    std::atomic<bool> mHasStopped;  ///< by itself
    std::uint64_t mLastReadCount;
    std::chrono::steady_clock::time_point mLastRead;
    int mLooks;  ///< since then
};

SoundDevice::Impl::Impl(SoundEngine& engine, const QAudioDevice& device, const QAudioFormat& format)
    : mEngine(engine),
      mStream(engine, SampleWriter(*FindKind(format.sampleFormat()), engine.GetChannelCount(),
                                   static_cast<std::size_t>(format.channelCount()))),
      mIsStarted(false),
      mBufferedFrames(0),
      mHasStopped(false),
      mLastReadCount(0),
      mLastRead(std::chrono::steady_clock::now()),
      mLooks(0) {
    mThread.setObjectName(QStringLiteral("sound"));
    mThread.start(QThread::TimeCriticalPriority);
    mStream.moveToThread(&mThread);
    mOnThread.moveToThread(&mThread);
    QMetaObject::invokeMethod(
        &mOnThread, [&] { StartSink(device, format); }, Qt::BlockingQueuedConnection);
}

SoundDevice::Impl::~Impl() {
    QThread* const here = QThread::currentThread();
    const auto end = [this, here] {
        // A sink that goes while it plays may ask for sound once more on its way, and not survive that.
        if (mSink) mSink->stop();
        mSink.reset();
        mStream.moveToThread(here);
        mOnThread.moveToThread(here);
    };
    QMetaObject::invokeMethod(&mOnThread, end, Qt::BlockingQueuedConnection);
    mThread.quit();
    mThread.wait();
}

void SoundDevice::Impl::StartSink(const QAudioDevice& device, const QAudioFormat& format) {
    mSink = std::make_unique<QAudioSink>(device, format);
    mSink->setBufferSize(format.bytesForDuration(kBufferMilliseconds * 1000));
    mSink->start(&mStream);
    mIsStarted = mSink->error() == QAudio::NoError && mSink->state() != QAudio::StoppedState;
    mBufferedFrames = format.framesForBytes(static_cast<qint32>(mSink->bufferSize()));
    QObject::connect(mSink.get(), &QAudioSink::stateChanged, &mOnThread,
                     [this](QAudio::State state) { OnStateChanged(state); });
}

void SoundDevice::Impl::OnStateChanged(QAudio::State state) {
    if (!mSink) return;
    // The stream has no end: whoever stops or has nothing more to play is in trouble.
    if (state == QAudio::StoppedState) mHasStopped = true;
    if (state == QAudio::IdleState) mEngine.NoteLost();
}

bool SoundDevice::Impl::HasFailed() {
    const auto now = std::chrono::steady_clock::now();
    const std::uint64_t count = mStream.GetReadCount();
    if (count != mLastReadCount) {
        mLastReadCount = count;
        mLastRead = now;
        mLooks = 0;
    }
    ++mLooks;
    return mHasStopped || (now - mLastRead > kPatience && mLooks > kFewestLooks);
}

SoundDevice::SoundDevice() = default;

SoundDevice::~SoundDevice() = default;

SoundDevice::Result SoundDevice::Start(SoundEngine& engine, int sampleRate) {
    Stop();
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull()) return kNoDevice;
    const QAudioFormat format = ChooseFormat(device, static_cast<int>(engine.GetChannelCount()), sampleRate);
    if (!format.isValid()) return kRefusesFormat;
    mImpl = std::make_unique<Impl>(engine, device, format);
    if (mImpl->IsStarted()) return kStarted;
    Stop();
    return kFails;
}

void SoundDevice::Stop() { mImpl.reset(); }

int SoundDevice::GetBufferedFrames() const { return mImpl ? mImpl->GetBufferedFrames() : 0; }

bool SoundDevice::HasFailed() { return mImpl && mImpl->HasFailed(); }

}  // namespace tessaly
