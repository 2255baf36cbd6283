# Windows programs made on Linux, with Debian's mingw-w64. What they are built on comes out of the folder that
# scripts/windows-dependencies fills; one folder in it for each.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

if(NOT ZEL_WINDOWS_CACHE)
  set(ZEL_WINDOWS_CACHE "$ENV{ZEL_WINDOWS_CACHE}")
endif()
if(NOT ZEL_WINDOWS_CACHE)
  set(ZEL_WINDOWS_CACHE "$ENV{XDG_CACHE_HOME}/zel-windows")
  if("$ENV{XDG_CACHE_HOME}" STREQUAL "")
    set(ZEL_WINDOWS_CACHE "$ENV{HOME}/.cache/zel-windows")
  endif()
endif()
set(ZEL_WINDOWS_CACHE "${ZEL_WINDOWS_CACHE}" CACHE PATH "What scripts/windows-dependencies made")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZEL_WINDOWS_CACHE)

# The threads of the C++ library, which the compiler's other variant has not.
set(ZEL_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${ZEL_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZEL_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${ZEL_MINGW}-windres)

set(ZEL_WINDOWS_PREFIXES)
foreach(name qt pugixml libsndfile googletest boost)
  list(APPEND ZEL_WINDOWS_PREFIXES ${ZEL_WINDOWS_CACHE}/${name})
endforeach()
set(CMAKE_FIND_ROOT_PATH ${ZEL_WINDOWS_PREFIXES} /usr/${ZEL_MINGW})
set(CMAKE_PREFIX_PATH ${ZEL_WINDOWS_PREFIXES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# pkg-config would tell of this machine's own libraries.
set(ENV{PKG_CONFIG_LIBDIR} ${ZEL_WINDOWS_CACHE}/libsndfile/lib/pkgconfig)

# Qt's tools that make sources are this machine's.
set(QT_HOST_PATH /usr CACHE PATH "Qt of the machine that builds")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "Qt's CMake packages of the machine that builds")

# How CTest runs what was built.
cmake_path(SET ZEL_WINE_RUN NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine-run)
set(CMAKE_CROSSCOMPILING_EMULATOR ${ZEL_WINE_RUN} CACHE FILEPATH "Runs programs of the build")
