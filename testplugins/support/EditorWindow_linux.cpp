#include "support/EditorWindow.h"

#include <algorithm>
#include <cstdlib>

#include <xcb/xcb.h>

namespace zeltestplugins {

/// An X11 window, over a display connection of the plug-in's own.
class EditorWindow::Platform {
public:
    Platform() : mConnection(xcb_connect(nullptr, nullptr)) {}
    ~Platform() {
        if (mWindow != 0) {
            xcb_destroy_window(mConnection, mWindow);
            std::free(xcb_get_input_focus_reply(mConnection, xcb_get_input_focus(mConnection), nullptr));
        }
        xcb_disconnect(mConnection);
    }
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    bool Open(void* parent, int width, int height) {
        if (xcb_connection_has_error(mConnection) != 0) return false;
        mWidth = width;
        mHeight = height;
        mWindow = xcb_generate_id(mConnection);
        mContext = xcb_generate_id(mConnection);
        const std::uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS;
        xcb_create_window(mConnection, XCB_COPY_FROM_PARENT, mWindow,
                          static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(parent)), 0, 0, Extent(width),
                          Extent(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                          &events);
        xcb_create_gc(mConnection, mContext, mWindow, 0, nullptr);
        xcb_map_window(mConnection, mWindow);
        xcb_flush(mConnection);
        return true;
    }

    void Resize(int width, int height) {
        mWidth = width;
        mHeight = height;
        const std::uint32_t size[] = {Extent(width), Extent(height)};
        xcb_configure_window(mConnection, mWindow, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
        Draw();
    }

    bool HandleEvents() {
        bool isClicked = false;
        bool isExposed = false;
        while (xcb_generic_event_t* const event = xcb_poll_for_event(mConnection)) {
            const int type = event->response_type & 0x7F;
            isExposed = isExposed || type == XCB_EXPOSE;
            isClicked = isClicked || type == XCB_BUTTON_PRESS;
            std::free(event);
        }
        if (isExposed) Draw();
        return isClicked;
    }

    int GetDescriptor() const { return xcb_get_file_descriptor(mConnection); }

private:
    static std::uint16_t Extent(int value) { return static_cast<std::uint16_t>(std::clamp(value, 1, 16384)); }

    void Fill(std::uint32_t colour, int top, int height) {
        xcb_change_gc(mConnection, mContext, XCB_GC_FOREGROUND, &colour);
        const xcb_rectangle_t area = {0, static_cast<std::int16_t>(top), Extent(mWidth), Extent(height)};
        xcb_poly_fill_rectangle(mConnection, mWindow, mContext, 1, &area);
    }

    void Draw() {
        Fill(kUpperColour, 0, mHeight / 2);
        Fill(kLowerColour, mHeight / 2, mHeight - mHeight / 2);
        xcb_flush(mConnection);
    }

    xcb_connection_t* const mConnection;
    xcb_window_t mWindow = 0;
    xcb_gcontext_t mContext = 0;
    int mWidth = 0;
    int mHeight = 0;
};

EditorWindow::EditorWindow() = default;

EditorWindow::~EditorWindow() = default;

bool EditorWindow::Open(void* parent, int width, int height) {
    mPlatform = std::make_unique<Platform>();
    if (!mPlatform->Open(parent, width, height)) mPlatform.reset();
    return mPlatform != nullptr;
}

void EditorWindow::Close() { mPlatform.reset(); }

void EditorWindow::Resize(int width, int height) {
    if (mPlatform) mPlatform->Resize(width, height);
}

bool EditorWindow::HandleEvents() { return mPlatform && mPlatform->HandleEvents(); }

int EditorWindow::GetDescriptor() const { return mPlatform ? mPlatform->GetDescriptor() : -1; }

}  // namespace zeltestplugins
