#pragma once

#include <atomic>
#include <memory>

namespace zelaudiofilterhost {

/// A value that the main thread replaces while the sound thread reads it, without either waiting for the other. The
/// sound thread neither allocates nor frees.
template <typename T>
class SoundThreadValue {
public:
    SoundThreadValue() : mPending(nullptr), mRetired(nullptr), mCurrent(std::make_unique<T>()) {}
    ~SoundThreadValue() {
        delete mPending.load();
        delete mRetired.load();
    }
    SoundThreadValue(const SoundThreadValue&) = delete;
    SoundThreadValue& operator=(const SoundThreadValue&) = delete;

    /// Main thread. The next Take has the value.
    void Publish(std::unique_ptr<T> value) {
        // In this order: as long as nothing is pending nothing is retired either, so that there is room for what the
        // new value will replace.
        delete mPending.exchange(nullptr);
        delete mRetired.exchange(nullptr);
        mPending.store(value.release());
    }

    /// Sound thread. The newest value; good until the next Take.
    const T& Take() {
        if (T* const next = mPending.exchange(nullptr)) {
            mRetired.store(mCurrent.release());
            mCurrent.reset(next);
        }
        return *mCurrent;
    }

private:
    std::atomic<T*> mPending;  ///< replaced by the main thread, taken by the sound thread
    std::atomic<T*> mRetired;  ///< left by the sound thread for the main thread to free
    std::unique_ptr<T> mCurrent;
};

}  // namespace zelaudiofilterhost
