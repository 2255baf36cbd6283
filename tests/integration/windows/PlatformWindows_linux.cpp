#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include <xcb/xcb.h>

#include "PlatformWindows.h"

namespace zeltests {

namespace {

xcb_window_t ToXcb(HWND window) { return static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(window)); }

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> Own(Reply* reply) {
    return {reply, &std::free};
}

}  // namespace

struct PlatformWindows::Connection {
    xcb_connection_t* xcb;
};

PlatformWindows::PlatformWindows() : mConnection(new Connection{xcb_connect(nullptr, nullptr)}) {
    if (xcb_connection_has_error(mConnection->xcb)) throw std::runtime_error("there is no X display");
}

PlatformWindows::~PlatformWindows() { xcb_disconnect(mConnection->xcb); }

bool PlatformWindows::Exists(HWND window) const { return !GetFrame(window).isEmpty(); }

bool PlatformWindows::IsViewable(HWND window) const {
    const auto cookie = xcb_get_window_attributes(mConnection->xcb, ToXcb(window));
    const auto reply = Own(xcb_get_window_attributes_reply(mConnection->xcb, cookie, nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

HWND PlatformWindows::GetParent(HWND window) const {
    const auto cookie = xcb_query_tree(mConnection->xcb, ToXcb(window));
    const auto reply = Own(xcb_query_tree_reply(mConnection->xcb, cookie, nullptr));
    return reply ? reinterpret_cast<HWND>(static_cast<std::uintptr_t>(reply->parent)) : nullptr;
}

QRect PlatformWindows::GetFrame(HWND window) const {
    const auto cookie = xcb_get_geometry(mConnection->xcb, ToXcb(window));
    const auto reply = Own(xcb_get_geometry_reply(mConnection->xcb, cookie, nullptr));
    return reply ? QRect(reply->x, reply->y, reply->width, reply->height) : QRect();
}

QRect PlatformWindows::GetSeen(HWND window, HWND outermost) const {
    QRect seen(QPoint(), GetFrame(window).size());
    while (window && window != outermost) {
        seen.translate(GetFrame(window).topLeft());
        window = GetParent(window);
        seen &= QRect(QPoint(), GetFrame(window).size());
    }
    return window ? seen : QRect();
}

}  // namespace zeltests
