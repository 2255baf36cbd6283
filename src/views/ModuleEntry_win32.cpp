#include <windows.h>

#include "views/ModuleState.h"

namespace zelaudiofilterhostui {

namespace {

// A program that was linked with these objects directly is its own module, and nobody calls the entry of a program.
[[gnu::constructor]] void OnAttach() {
    HINSTANCE own = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&OnAttach), &own);
    SetModuleInstance(own);
}

}  // namespace

}  // namespace zelaudiofilterhostui

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) zelaudiofilterhostui::SetModuleInstance(instance);
    if (reason == DLL_PROCESS_DETACH) zelaudiofilterhostui::SetModuleInstance(nullptr);
    return TRUE;
}
