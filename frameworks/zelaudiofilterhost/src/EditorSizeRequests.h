#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include <boost/function.hpp>
#include <zelcore/Geometry.h>

namespace zelaudiofilterhost {

/// The window sizes that a plug-in asks for, on their way from whatever thread to its editor on the main thread. The
/// last one counts. Main thread, but for Request.
class EditorSizeRequests {
public:
    /// The largest width and height that is taken.
    static constexpr int kMaxExtent = 16384;

    EditorSizeRequests();
    ~EditorSizeRequests();
    EditorSizeRequests(const EditorSizeRequests&) = delete;
    EditorSizeRequests& operator=(const EditorSizeRequests&) = delete;

    /// From now on requests are taken, until End. `onNews` is called from the main loop after a request or Announce:
    /// once, and not again before the next Rearm, however much is asked for meanwhile.
    void Begin(const boost::function<void()>& onNews);
    /// Forgets what was asked for; what is under way to `onNews` does not reach it any more.
    void End();
    void Announce();
    void Rearm();
    /// The size asked for since the last Take; nothing when there is none.
    std::optional<zelcore::geom::Point> Take();

    /// False, and nothing happens, before Begin, after End, and for a size without area or beyond kMaxExtent. Any
    /// thread.
    bool Request(std::intptr_t width, std::intptr_t height) noexcept;

private:
    /// Shared with the calls that are posted, which may come when nobody waits for them any more.
    struct Mailbox {
        std::atomic<bool> isOpen{false};
        std::atomic<bool> isPosted{false};
        std::atomic<std::uint32_t> size{0};  ///< width * 65536 + height; 0 for none
        boost::function<void()> onNews;      ///< main thread
    };

    const std::shared_ptr<Mailbox> mMailbox;
};

}  // namespace zelaudiofilterhost
