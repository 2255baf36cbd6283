#pragma once

#include <zelcore/Export.h>

#if defined(ZEL_BUILDING_zelmarshal)
#define ZELMARSHAL_API ZEL_DLL_EXPORT
#else
#define ZELMARSHAL_API ZEL_DLL_IMPORT
#endif
