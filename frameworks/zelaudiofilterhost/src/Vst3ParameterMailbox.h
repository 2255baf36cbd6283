#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
#include <vector>

#include <pluginterfaces/vst/vsttypes.h>
#include <zelaudiofilterhost/PluginComponentInfo.h>

namespace zelaudiofilterhost {

/// The newest values of parameters, on their way from one thread, the sender, to another, the receiver. Whatever is
/// sent twice before it is received arrives once, with the last value. Neither side waits for the other; Put and Take
/// allocate nothing.
///
/// Each parameter that was ever sent has a slot; slots that hold a value not yet received are linked in a list. Slots
/// stay where they are while the mailbox lives, so that the sender may add some at any time.
class Vst3ParameterMailbox {
public:
    typedef Steinberg::Vst::ParamID Id;

    /// More parameters than this are not taken. Twice as many as there may be at a time: their ids may change.
    static constexpr std::size_t kMaxParameters = 2 * std::size_t(PluginComponentInfo::kMaxParameters);

    Vst3ParameterMailbox() = default;
    Vst3ParameterMailbox(const Vst3ParameterMailbox&) = delete;
    Vst3ParameterMailbox& operator=(const Vst3ParameterMailbox&) = delete;

    /// Makes room for `count` different parameters in all, at most kMaxParameters. Sender; allocates.
    void Reserve(std::size_t count);
    /// For how many different parameters there is room in all. Sender.
    std::size_t GetCapacity() const { return mSlots.size(); }
    /// False when the parameter is a new one and there is no room for it. Sender.
    bool Put(Id id, double value);
    /// Whether a value of this parameter has not been received yet. Sender; may be out of date at once.
    bool IsWaiting(Id id) const;
    /// Calls `function(id, value)` for each that has not been received yet, in the order in which they were first sent;
    /// it may Put them anew. Sender; may be out of date at once.
    template <typename Function>
    void ForEachWaiting(Function function) const {
        for (std::size_t i = 0; i < mUsed; ++i) {
            const Slot& slot = mSlots[i];
            if (slot.isWaiting.load(std::memory_order_acquire))
                function(slot.id, slot.value.load(std::memory_order_relaxed));
        }
    }

    /// Receives at most `room` values in the order in which their parameters were first sent: calls
    /// `function(id, value)` for each. Receiver.
    template <typename Function>
    void Take(std::size_t room, Function function) {
        for (; room > 0; --room) {
            if (mTaken == nullptr) mTaken = TakeList();
            if (mTaken == nullptr) return;
            Slot& slot = *mTaken;
            mTaken = slot.next;
            // From here on the sender may link it again; the value is read later, so that none goes unseen.
            slot.isWaiting.exchange(false, std::memory_order_acq_rel);
            function(slot.id, slot.value.load(std::memory_order_relaxed));
        }
    }

private:
    struct Slot {
        Id id = 0;
        std::atomic<double> value{0.0};
        std::atomic<bool> isWaiting{false};
        Slot* next = nullptr;  ///< the sender's until it is linked, then the receiver's until isWaiting is false
    };

    /// Where the parameter is, or would be, in the index.
    std::size_t Locate(Id id) const;
    void Index(Slot& slot) { mIndex[Locate(slot.id)] = &slot; }
    Slot* TakeList();

    // The sender's: a hash table into the slots, of a power of two and never more than half full.
    std::deque<Slot> mSlots;
    std::size_t mUsed = 0;
    std::vector<Slot*> mIndex;
    // Both sides'.
    std::atomic<Slot*> mNewest{nullptr};
    // The receiver's: what it has taken off the list and not handed out yet.
    Slot* mTaken = nullptr;
};

}  // namespace zelaudiofilterhost
