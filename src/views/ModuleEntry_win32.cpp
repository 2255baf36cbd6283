#include <windows.h>

#include "views/ModuleState.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) zelaudiofilterhostui::SetModuleInstance(instance);
    if (reason == DLL_PROCESS_DETACH) zelaudiofilterhostui::SetModuleInstance(nullptr);
    return TRUE;
}
