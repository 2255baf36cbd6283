#include <atomic>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>
#include <zelcore/SimpleMainLoop.h>

using zelcore::threads::SimpleMainLoop;

namespace {

/// A window that nobody sees, as modules have them for their timers and for calls from other threads.
class HiddenWindow {
public:
    HiddenWindow()
        : mWindow(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        EXPECT_NE(mWindow, nullptr) << GetLastError();
        SetWindowLongPtrW(mWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(mWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Handle));
    }
    ~HiddenWindow() { DestroyWindow(mWindow); }
    HWND Get() const { return mWindow; }
    int messages = 0;

private:
    static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM first, LPARAM second) {
        if (message != WM_APP) return DefWindowProcW(window, message, first, second);
        ++reinterpret_cast<HiddenWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA))->messages;
        return 42;
    }
    HWND mWindow;
};

}  // namespace

TEST(SimpleMainLoopTest, DescriptorsAreNotWatchedHere) {
    SimpleMainLoop loop;
    EXPECT_EQ(loop.WatchFileDescriptor(0, [] {}), 0u);
}

TEST(SimpleMainLoopTest, MessagesReachTheWindowsOfTheThread) {
    SimpleMainLoop loop;
    HiddenWindow window;
    PostMessageW(window.Get(), WM_APP, 0, 0);
    loop.RunPending();
    EXPECT_EQ(window.messages, 1);
}

TEST(SimpleMainLoopTest, OtherThreadThatWaitsForAWindowIsAnsweredWhileTheLoopSleeps) {
    SimpleMainLoop loop;
    HiddenWindow window;
    std::atomic<LRESULT> answer{0};
    std::thread other([&] {
        answer = SendMessageW(window.Get(), WM_APP, 0, 0);
        loop.Post([&] { loop.Quit(); });
    });
    loop.Run();
    other.join();
    EXPECT_EQ(answer, 42);
}
