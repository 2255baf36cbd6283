// Stands for a library that was there when a plug-in was built and is not where it is used.
#include <zelcore/Export.h>

extern "C" ZEL_DLL_EXPORT int ZelAbsentFunction() { return 1; }
