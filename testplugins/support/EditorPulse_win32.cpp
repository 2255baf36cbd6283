#include "support/EditorPulse.h"

#include <windows.h>

#include <utility>

namespace zeltestplugins {

namespace {

constexpr UINT kRead = WM_APP;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kMilliseconds = 5;

}  // namespace

/// A window that nobody sees, for its timer and its messages. Editors draw by themselves here.
class EditorPulse::Platform {
public:
    Platform(std::function<void()> onTick, std::function<void()> onRead)
        : mOnTick(std::move(onTick)),
          mOnRead(std::move(onRead)),
          mWindow(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        SetWindowLongPtrW(mWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(mWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnMessage));
        SetTimer(mWindow, kTimer, kMilliseconds, nullptr);
    }
    ~Platform() { DestroyWindow(mWindow); }
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    void Stop() { KillTimer(mWindow, kTimer); }

private:
    /// The system's code between this and the host's does not let exceptions through.
    static void Call(const std::function<void()>& function) {
        try {
            function();
        } catch (...) {
        }
    }
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
        auto* const self = reinterpret_cast<Platform*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_TIMER) {
            Call(self->mOnTick);
            PostMessageW(window, kRead, 0, 0);
            return 0;
        }
        if (message == kRead) {
            Call(self->mOnRead);
            return 0;
        }
        return DefWindowProcW(window, message, first, second);
    }

    const std::function<void()> mOnTick;
    const std::function<void()> mOnRead;
    const HWND mWindow;
};

EditorPulse::EditorPulse(Steinberg::IPlugFrame&, EditorWindow&, Steinberg::FUnknown*, std::function<void()> onTick,
                         std::function<void()> onRead)
    : mPlatform(std::make_unique<Platform>(std::move(onTick), std::move(onRead))) {}

EditorPulse::~EditorPulse() = default;

void EditorPulse::Stop() { mPlatform->Stop(); }

}  // namespace zeltestplugins
