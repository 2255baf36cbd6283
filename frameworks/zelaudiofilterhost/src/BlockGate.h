#pragma once

#include <atomic>
#include <thread>

namespace zelaudiofilterhost {

/// Keeps the sound thread out of a plug-in while the main thread does with it what few plug-ins stand beside a block.
/// The sound thread does not wait: it is turned away. The main thread waits for the block that is under way, and for no
/// other, however closely they follow each other.
class BlockGate {
public:
    BlockGate() = default;
    BlockGate(const BlockGate&) = delete;
    BlockGate& operator=(const BlockGate&) = delete;

    /// One block, as long as it lives. Sound thread; takes no locks.
    class Block {
    public:
        explicit Block(BlockGate& gate) noexcept;
        ~Block();
        Block(const Block&) = delete;
        Block& operator=(const Block&) = delete;

        /// False when the gate is closed.
        bool IsInside() const noexcept { return mIsInside; }

    private:
        BlockGate& mGate;
        const bool mIsInside;
    };

    /// Closes the gate as long as it lives. Main thread.
    class Closed {
    public:
        explicit Closed(BlockGate& gate);
        ~Closed();
        Closed(const Closed&) = delete;
        Closed& operator=(const Closed&) = delete;

        /// False when it was closed already: this is called from within what it was closed for. False also, and the
        /// gate is as it was, when this is called from within a block.
        bool IsFirst() const { return mIsFirst; }

    private:
        BlockGate& mGate;
        const bool mIsFirst;
    };

private:
    enum StateBits : unsigned { kInBlock = 1, kClosed = 2 };

    bool TryEnter() noexcept;
    bool TryClose();

    std::atomic<unsigned> mState{0};  ///< of StateBits
    std::atomic<std::thread::id> mBlockThread{};
    bool mIsClosed = false;  ///< main thread
};

}  // namespace zelaudiofilterhost
