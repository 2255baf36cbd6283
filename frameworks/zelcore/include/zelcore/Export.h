#pragma once

/// Marks what a shared library of this project exports. Each library defines its own `…_API` name from these two,
/// so that a header reads the same while its library is built and while it is used.
#if defined(_WIN32)
#define ZEL_DLL_EXPORT __declspec(dllexport)
#define ZEL_DLL_IMPORT __declspec(dllimport)
#else
#define ZEL_DLL_EXPORT __attribute__((visibility("default")))
#define ZEL_DLL_IMPORT __attribute__((visibility("default")))
#endif

#if defined(ZEL_BUILDING_zelcore)
#define ZELCORE_API ZEL_DLL_EXPORT
#else
#define ZELCORE_API ZEL_DLL_IMPORT
#endif
