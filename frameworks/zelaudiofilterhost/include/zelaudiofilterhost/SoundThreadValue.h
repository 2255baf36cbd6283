#pragma once

#include <atomic>
#include <utility>

namespace zelaudiofilterhost {

/// A value that one thread, mostly the main thread, replaces while the sound thread reads it, without either waiting
/// for the other. The sound thread neither allocates nor frees. Goes when neither thread uses it any more.
template <typename T>
class SoundThreadValue {
public:
    SoundThreadValue() : mPending(nullptr), mRetired(nullptr), mCurrent(new Holder{T(), nullptr}) {}
    ~SoundThreadValue() {
        delete mPending.load();
        delete mCurrent;
        Collect();
    }
    SoundThreadValue(const SoundThreadValue&) = delete;
    SoundThreadValue& operator=(const SoundThreadValue&) = delete;

    /// Main thread. The next Take has the value. Frees what Collect does.
    void Publish(T value) {
        Holder* const next = new Holder{std::move(value), nullptr};
        delete mPending.exchange(next);
        Collect();
    }

    /// Main thread. Frees what the sound thread has let go of since.
    void Collect() {
        for (Holder* holder = mRetired.exchange(nullptr); holder != nullptr;)
            delete std::exchange(holder, holder->nextRetired);
    }

    /// Sound thread. The newest value; good until the next Take.
    const T& Take() {
        if (Holder* const next = mPending.exchange(nullptr)) {
            Retire(mCurrent);
            mCurrent = next;
        }
        return mCurrent->value;
    }

private:
    struct Holder {
        T value;
        Holder* nextRetired;
    };

    void Retire(Holder* holder) {
        holder->nextRetired = mRetired.load();
        // The main thread only ever takes the whole chain: at most one more turn.
        while (!mRetired.compare_exchange_weak(holder->nextRetired, holder)) {
        }
    }

    std::atomic<Holder*> mPending;  ///< replaced by the main thread, taken by the sound thread
    std::atomic<Holder*> mRetired;  ///< left by the sound thread for the main thread to free
    Holder* mCurrent;               ///< the sound thread's
};

}  // namespace zelaudiofilterhost
