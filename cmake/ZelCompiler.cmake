# Language, warnings, visibility and sanitizers of our own code.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Everything that runs together lies together: programs find the scanner process beside themselves, and the libraries
# as well.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# Windows looks for libraries beside the program, and names them without anything before.
if(WIN32)
  set(CMAKE_SHARED_LIBRARY_PREFIX "")
  set(CMAKE_SHARED_MODULE_PREFIX "")
  # The interfaces of Windows 10, without the names that collide with the standard library's and Asio's.
  add_compile_definitions(_WIN32_WINNT=0x0A00 UNICODE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()

# Builds of the same sources in several folders share what is the same in them. ccache passes precompiled headers by
# unless it is told that our sources depend on no times and no stray definitions.
find_program(ZEL_CCACHE ccache)
if(ZEL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros ${ZEL_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

# Several sources at a time, which read the headers that they share once. For builds from nothing; in daily work, where
# one source changes and each has to name what it uses, it is off.
option(ZEL_UNITY "Compile several sources at a time" OFF)
if(ZEL_UNITY)
  set(CMAKE_UNITY_BUILD ON)
  set(CMAKE_UNITY_BUILD_BATCH_SIZE 10)
  # Classes of a source that hold what is private to that source: all sources but the first look like headers here.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

# What our own code is held to; headers of dependencies are system headers and stay out of it.
add_library(zel_warnings INTERFACE)
# Whoever builds a release may have a compiler that we have not met, which must not keep them from it by what it warns of.
target_compile_options(zel_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow $<$<NOT:$<CONFIG:Release>>:-Werror>)
# GCC has it without being asked.
add_compile_options($<$<CXX_COMPILER_ID:Clang>:-fsized-deallocation>)
# GCC 12 sees overlapping and endless copies in its own std::string operator+ once it optimises as far as a release does.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  foreach(warning restrict stringop-overflow array-bounds)
    target_compile_options(zel_warnings INTERFACE $<$<CONFIG:Release>:-Wno-${warning}>)
  endforeach()
endif()

if(ZEL_SANITIZE)
  set(ZEL_SANITIZE_COMPILE -fsanitize=${ZEL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Sanitizer builds see more paths than the optimiser can follow and warn where nothing is wrong.
    list(APPEND ZEL_SANITIZE_COMPILE
         -Wno-error=maybe-uninitialized -Wno-error=stringop-overflow -Wno-error=array-bounds)
  endif()
  set(ZEL_SANITIZE_LINK -fsanitize=${ZEL_SANITIZE})
  add_compile_options(${ZEL_SANITIZE_COMPILE})
  add_link_options(${ZEL_SANITIZE_LINK})
endif()

if(ZEL_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "The fuzzers are built by Clang: cmake --preset fuzz")
  endif()
  # Clang takes private names of sources that are compiled together for shadows of each other.
  target_compile_options(zel_warnings INTERFACE -Wno-shadow)
  # What a fuzzer finds its way by: the code that an input reaches, and what it is compared with there.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
