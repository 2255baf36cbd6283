#pragma once

#include <zelcore/Export.h>

#if defined(ZEL_BUILDING_zelaudiofilterhostui)
#define ZELAUDIOFILTERHOSTUI_API ZEL_DLL_EXPORT
#else
#define ZELAUDIOFILTERHOSTUI_API ZEL_DLL_IMPORT
#endif
