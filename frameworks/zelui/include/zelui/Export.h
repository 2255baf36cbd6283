#pragma once

#include <zelcore/Export.h>

#if defined(ZEL_BUILDING_zelui)
#define ZELUI_API ZEL_DLL_EXPORT
#else
#define ZELUI_API ZEL_DLL_IMPORT
#endif
