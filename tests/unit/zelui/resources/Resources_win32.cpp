// A module that carries texts, as a library carries its layout archives; what it carries is in Resources.rc.
#include <zelcore/Export.h>

extern "C" ZEL_DLL_EXPORT int zelHasResources() { return 1; }
