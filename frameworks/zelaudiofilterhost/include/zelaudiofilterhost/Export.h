#pragma once

#include <zelcore/Export.h>

#if defined(ZEL_BUILDING_zelaudiofilterhost)
#define ZELAUDIOFILTERHOST_API ZEL_DLL_EXPORT
#else
#define ZELAUDIOFILTERHOST_API ZEL_DLL_IMPORT
#endif
