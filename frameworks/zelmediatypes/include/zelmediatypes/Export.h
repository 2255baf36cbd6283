#pragma once

#include <zelcore/Export.h>

#if defined(ZEL_BUILDING_zelmediatypes)
#define ZELMEDIATYPES_API ZEL_DLL_EXPORT
#else
#define ZELMEDIATYPES_API ZEL_DLL_IMPORT
#endif
