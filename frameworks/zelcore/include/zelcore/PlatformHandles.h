#pragma once

/// The handles of windows and modules that the interfaces of this system carry.
///
/// On Windows they are the system's own types. Elsewhere they are opaque pointers of the same names: an `HWND` is the
/// id of a native (X11) window, an `HINSTANCE` what the dynamic loader knows a module by. This is the only header that
/// tells the platforms apart for that reason.
#if defined(_WIN32)
struct HWND__;
typedef HWND__* HWND;
struct HINSTANCE__;
typedef HINSTANCE__* HINSTANCE;
#else
struct ZelOpaqueWindow;
typedef ZelOpaqueWindow* HWND;
struct ZelOpaqueModule;
typedef ZelOpaqueModule* HINSTANCE;
#endif
