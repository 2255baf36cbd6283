#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <xcb/xcb.h>

#include "Leftovers.h"

namespace zeltests {

namespace {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
typedef std::unique_ptr<xcb_connection_t, Disconnect> Connection;

std::size_t CountIn(xcb_connection_t* connection, xcb_window_t window) {
    const std::unique_ptr<xcb_query_tree_reply_t, Free> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    if (!tree) return 0;
    const xcb_window_t* const children = xcb_query_tree_children(tree.get());
    const int count = xcb_query_tree_children_length(tree.get());
    std::size_t all = static_cast<std::size_t>(count);
    for (int i = 0; i < count; ++i) all += CountIn(connection, children[i]);
    return all;
}

}  // namespace

std::size_t CountDescriptors() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
    return count;
}

std::size_t CountWindows() {
    const Connection connection(xcb_connect(nullptr, nullptr));
    return CountIn(connection.get(), xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root);
}

std::size_t CountWindowsIn(HWND window) {
    const Connection connection(xcb_connect(nullptr, nullptr));
    return CountIn(connection.get(), static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(window)));
}

}  // namespace zeltests
