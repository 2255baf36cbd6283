#include "support/EditorWindow.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace zeltestplugins {

namespace {

constexpr wchar_t kClassName[] = L"ZelTestEditor";

/// The module that this code is in: windows of several modules must not share a class.
HINSTANCE OwnModule() {
    HMODULE own = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OwnModule), &own);
    return own;
}

int Extent(int value) { return std::clamp(value, 1, 16384); }

void Fill(HDC context, std::uint32_t colour, int top, int bottom) {
    const RECT area = {0, top, 16384, bottom};
    // The system writes the colours the other way round.
    const HBRUSH brush = CreateSolidBrush(RGB(colour >> 16, (colour >> 8) & 0xFF, colour & 0xFF));
    FillRect(context, &area, brush);
    DeleteObject(brush);
}

void Paint(HWND window) {
    RECT area;
    GetClientRect(window, &area);
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    const int middle = static_cast<int>(area.bottom) / 2;
    Fill(context, EditorWindow::kUpperColour, 0, middle);
    Fill(context, EditorWindow::kLowerColour, middle, static_cast<int>(area.bottom));
    EndPaint(window, &paint);
}

}  // namespace

/// A child window, which draws by itself.
class EditorWindow::Platform {
public:
    Platform() {
        WNDCLASSEXW windowClass = {};
        windowClass.cbSize = sizeof windowClass;
        windowClass.style = CS_HREDRAW | CS_VREDRAW;
        windowClass.lpfnWndProc = OnMessage;
        windowClass.hInstance = OwnModule();
        windowClass.lpszClassName = kClassName;
        // One that is there already is this module's own.
        RegisterClassExW(&windowClass);
    }
    ~Platform() {
        if (mWindow != nullptr) DestroyWindow(mWindow);
        // Refused while another editor of this module is open; the last one takes it along.
        UnregisterClassW(kClassName, OwnModule());
    }
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    bool Open(void* parent, int width, int height) {
        mWindow = CreateWindowExW(0, kClassName, L"", WS_CHILD | WS_VISIBLE, 0, 0, Extent(width), Extent(height),
                                  static_cast<HWND>(parent), nullptr, OwnModule(), nullptr);
        if (mWindow == nullptr) return false;
        SetWindowLongPtrW(mWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        return true;
    }

    void Resize(int width, int height) {
        SetWindowPos(mWindow, nullptr, 0, 0, Extent(width), Extent(height), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    bool TakeClick() { return std::exchange(mIsClicked, false); }

private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
        auto* const self = reinterpret_cast<Platform*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        switch (message) {
            case WM_PAINT:
                Paint(window);
                return 0;
            case WM_ERASEBKGND:
                return 1;
            case WM_LBUTTONDOWN:
                if (self != nullptr) self->mIsClicked = true;
                return 0;
            case WM_NCDESTROY:
                if (self != nullptr) self->mWindow = nullptr;
                break;
            default:
                break;
        }
        return DefWindowProcW(window, message, first, second);
    }

    HWND mWindow = nullptr;
    bool mIsClicked = false;
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

bool EditorWindow::HandleEvents() { return mPlatform && mPlatform->TakeClick(); }

int EditorWindow::GetDescriptor() const { return -1; }

}  // namespace zeltestplugins
