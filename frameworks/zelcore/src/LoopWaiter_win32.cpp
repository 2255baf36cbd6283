#include "LoopWaiter.h"

#include <system_error>

#include <windows.h>

namespace zelcore {
namespace threads {

namespace {

/// Windows also exist where nothing is shown: modules keep hidden ones, and other threads wait for their answers.
void HandOutMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        // A request to end the thread's loop is for loops of another kind.
        if (message.message == WM_QUIT) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace

bool LoopWaiter::CanWatchDescriptors() { return false; }

LoopWaiter::LoopWaiter() : mReadEnd(-1), mWriteEnd(-1) {
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (event == nullptr)
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                                "could not make the main loop's event");
    mReadEnd = reinterpret_cast<std::intptr_t>(event);
}

LoopWaiter::~LoopWaiter() { CloseHandle(reinterpret_cast<HANDLE>(mReadEnd)); }

void LoopWaiter::Wake() noexcept { SetEvent(reinterpret_cast<HANDLE>(mReadEnd)); }

void LoopWaiter::Wait(int milliseconds, std::vector<Descriptor>&) {
    const HANDLE event = reinterpret_cast<HANDLE>(mReadEnd);
    const DWORD limit = milliseconds < 0 ? INFINITE : static_cast<DWORD>(milliseconds);
    if (MsgWaitForMultipleObjectsEx(1, &event, limit, QS_ALLINPUT, MWMO_INPUTAVAILABLE) == WAIT_OBJECT_0 + 1)
        HandOutMessages();
}

}  // namespace threads
}  // namespace zelcore
