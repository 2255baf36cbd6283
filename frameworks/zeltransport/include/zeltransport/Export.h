#pragma once

#include <zelcore/Export.h>

#if defined(ZEL_BUILDING_zeltransport)
#define ZELTRANSPORT_API ZEL_DLL_EXPORT
#else
#define ZELTRANSPORT_API ZEL_DLL_IMPORT
#endif
