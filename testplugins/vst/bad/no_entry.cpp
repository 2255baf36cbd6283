// A plain shared library in the plug-in folder. "main" is a variable here: calling it would be fatal.
#include <zelcore/Export.h>

extern "C" ZEL_DLL_EXPORT int gNotAFunction asm("main");
int gNotAFunction = 1;
