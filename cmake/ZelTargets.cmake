# One way to declare each kind of target, so that a folder's own list says only what is particular to it.

# What the loader knows the libraries by: what has the same one can be put in place of the other. Before 1.0 each minor
# version may change the binary interface.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(ZEL_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
  set(ZEL_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

# zel_sources(<variable> <folder>): the sources of a folder for this platform. Files named …_posix, …_linux, …_win32 and
# …_macos belong to one platform, those named …_accessible and …_inaccessible to a Qt with and without screen readers.
function(zel_sources variable folder)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "_(posix|linux|macos)\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "_(win32|macos)\\.cpp$")
  endif()
  if(ZEL_QT_ACCESSIBILITY)
    list(FILTER sources EXCLUDE REGEX "_inaccessible\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "_accessible\\.cpp$")
  endif()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# zel_sources_of(<variable> <folder> <class>...): those of a folder's sources for this platform that are of the classes.
function(zel_sources_of variable folder)
  zel_sources(sources ${folder})
  list(JOIN ARGN "|" classes)
  list(FILTER sources INCLUDE REGEX "/(${classes})(_[a-z0-9]+)?\\.cpp$")
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# Fuzzers call what the libraries keep to themselves.
set(ZEL_FRAMEWORK_KIND SHARED)
if(ZEL_FUZZ)
  set(ZEL_FRAMEWORK_KIND STATIC)
endif()

# zel_framework(<name> PUBLIC <libs…> PRIVATE <libs…>): a shared library from src/*.cpp with headers in include/.
function(zel_framework name)
  cmake_parse_arguments(ARG "" "" "PUBLIC;PRIVATE" ${ARGN})
  zel_sources(sources ${CMAKE_CURRENT_SOURCE_DIR}/src)
  add_library(${name} ${ZEL_FRAMEWORK_KIND} ${sources})
  target_include_directories(${name}
    PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/src)
  target_compile_definitions(${name} PRIVATE ZEL_BUILDING_${name})
  target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} $<BUILD_INTERFACE:zel_warnings>)
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${ZEL_SOVERSION})
endfunction()

# zel_unit_test(<name> <libs…>): a test program from this folder's sources, every test of it registered with CTest. Runs
# without a display.
function(zel_unit_test name)
  zel_sources(sources ${CMAKE_CURRENT_SOURCE_DIR})
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE ${ARGN} zel_test_support GTest::gmock GTest::gtest zel_warnings)
  zel_precompile_test(${name} ${ARGN})
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${name} PROPERTIES LABELS unit TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# zel_threaded(<test>): the test is of code that several threads run, and is run under ThreadSanitizer as well (label
# "threaded"; the target threaded_tests builds all of these). Call it where the test was added.
function(zel_threaded name)
  set_property(TEST ${name} APPEND PROPERTY LABELS threaded)
  if(NOT TARGET threaded_tests)
    add_custom_target(threaded_tests)
  endif()
  add_dependencies(threaded_tests ${name})
endfunction()
