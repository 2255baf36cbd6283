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

find_program(ZEL_CCACHE ccache)
if(ZEL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ZEL_CCACHE})
  if(ZEL_PCH)
    # It passes precompiled headers by unless it is told that our sources depend on no times and no stray definitions.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${ZEL_CCACHE})
  endif()
  set(CMAKE_C_COMPILER_LAUNCHER ${ZEL_CCACHE})
endif()

# What our own code is held to; headers of dependencies are system headers and stay out of it.
add_library(zel_warnings INTERFACE)
target_compile_options(zel_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
# GCC 12 sees overlapping copies in its own std::string operator+ once it optimises as far as a release does.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(zel_warnings INTERFACE $<$<CONFIG:Release>:-Wno-restrict>)
endif()

if(ZEL_SANITIZE)
  add_compile_options(-fsanitize=${ZEL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ZEL_SANITIZE})
  # Sanitizer builds see more paths than the optimiser can follow and warn where nothing is wrong.
  add_compile_options(-Wno-error=maybe-uninitialized -Wno-error=stringop-overflow -Wno-error=array-bounds)
endif()
