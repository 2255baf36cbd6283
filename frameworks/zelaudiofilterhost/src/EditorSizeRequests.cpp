#include "EditorSizeRequests.h"

#include <zelcore/Threads.h>

namespace zelaudiofilterhost {

namespace {

constexpr std::uint32_t kWidthUnit = 1 << 16;

bool IsExtent(std::intptr_t value) { return value > 0 && value <= EditorSizeRequests::kMaxExtent; }

}  // namespace

EditorSizeRequests::EditorSizeRequests() : mMailbox(std::make_shared<Mailbox>()) {}

EditorSizeRequests::~EditorSizeRequests() { End(); }

void EditorSizeRequests::Begin(const boost::function<void()>& onNews) {
    End();
    mMailbox->onNews = onNews;
    mMailbox->isPosted = false;
    mMailbox->isOpen = true;
}

void EditorSizeRequests::End() {
    mMailbox->isOpen = false;
    mMailbox->size = 0;
    mMailbox->onNews.clear();
}

void EditorSizeRequests::Announce() {
    if (mMailbox->isPosted.exchange(true)) return;
    zelcore::threads::AsyncCallFromMainThread([mailbox = mMailbox] {
        // It may end, or begin anew, what it is called for.
        const boost::function<void()> onNews = mailbox->onNews;
        if (onNews) onNews();
    });
}

void EditorSizeRequests::Rearm() { mMailbox->isPosted = false; }

std::optional<zelcore::geom::Point> EditorSizeRequests::Take() {
    const std::uint32_t size = mMailbox->size.exchange(0);
    if (size == 0) return {};
    return zelcore::geom::Point{static_cast<long>(size / kWidthUnit), static_cast<long>(size % kWidthUnit)};
}

bool EditorSizeRequests::Request(std::intptr_t width, std::intptr_t height) noexcept {
    if (!mMailbox->isOpen || !IsExtent(width) || !IsExtent(height)) return false;
    mMailbox->size = static_cast<std::uint32_t>(width) * kWidthUnit + static_cast<std::uint32_t>(height);
    try {
        Announce();
    } catch (...) {
        // No memory for the call: the editor's next turn finds the size all the same.
    }
    return true;
}

}  // namespace zelaudiofilterhost
