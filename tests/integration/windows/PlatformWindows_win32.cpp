#include "PlatformWindows.h"

#include <windows.h>

namespace zeltests {

namespace {

QRect GetInside(HWND window) {
    RECT inside = {};
    return GetClientRect(window, &inside) ? QRect(0, 0, inside.right, inside.bottom) : QRect();
}

}  // namespace

// The system shows every program the same.
struct PlatformWindows::Connection {};

PlatformWindows::PlatformWindows() = default;

PlatformWindows::~PlatformWindows() = default;

bool PlatformWindows::Exists(HWND window) const { return IsWindow(window) != 0; }

bool PlatformWindows::IsViewable(HWND window) const { return IsWindowVisible(window) != 0; }

HWND PlatformWindows::GetParent(HWND window) const { return GetAncestor(window, GA_PARENT); }

QRect PlatformWindows::GetFrame(HWND window) const {
    RECT frame = {};
    if (!GetWindowRect(window, &frame)) return QRect();
    MapWindowPoints(HWND_DESKTOP, GetParent(window), reinterpret_cast<POINT*>(&frame), 2);
    return QRect(QPoint(frame.left, frame.top), QPoint(frame.right - 1, frame.bottom - 1));
}

QRect PlatformWindows::GetSeen(HWND window, HWND outermost) const {
    QRect seen(QPoint(), GetFrame(window).size());
    while (window && window != outermost) {
        seen.translate(GetFrame(window).topLeft());
        window = GetParent(window);
        seen &= GetInside(window);
    }
    return window ? seen : QRect();
}

}  // namespace zeltests
