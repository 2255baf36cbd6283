# Every dependency comes from the distribution's packages; nothing is fetched or vendored.
set(THREADS_PREFER_PTHREAD_FLAG ON)
find_package(Threads REQUIRED)
find_package(Boost 1.81 REQUIRED)
find_package(pugixml REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets)
# Whether that Qt was built with what screen readers need; sources are chosen by it.
get_target_property(ZEL_QT_FEATURES Qt6::Gui QT_ENABLED_PUBLIC_FEATURES)
if("accessibility" IN_LIST ZEL_QT_FEATURES)
  set(ZEL_QT_ACCESSIBILITY ON)
else()
  set(ZEL_QT_ACCESSIBILITY OFF)
  message(STATUS "This Qt was built without accessibility: screen readers get nothing from what is built with it")
endif()
# For playback; Tessaly goes without where it is missing.
find_package(Qt6 6.4 QUIET OPTIONAL_COMPONENTS Multimedia)
find_package(PkgConfig REQUIRED)
# Its own CMake package is missing from Debian's; the name is the one that it would have.
pkg_check_modules(ZEL_SNDFILE REQUIRED IMPORTED_TARGET GLOBAL sndfile)
add_library(SndFile::sndfile ALIAS PkgConfig::ZEL_SNDFILE)
if(ZEL_TESTS)
  find_package(GTest REQUIRED)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
endif()
if(ZEL_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()

# QT_NO_KEYWORDS: Qt's macro `signals` would tear up the namespace of that name wherever both are included.
# Signals2, Asio and Boost.JSON ask for this much in headers alone; the two that bring source are compiled once, where
# they are used.
add_library(zel_boost INTERFACE)
target_link_libraries(zel_boost INTERFACE Boost::headers)
target_compile_definitions(zel_boost INTERFACE BOOST_ALL_NO_LIB BOOST_ERROR_CODE_HEADER_ONLY QT_NO_KEYWORDS)

find_path(ZEL_VST3_SDK pluginterfaces/vst/ivsteditcontroller.h
          PATHS /usr/share/juce/modules/juce_audio_processors/format_types/VST3_SDK
          NO_CMAKE_FIND_ROOT_PATH  # sources, the same for every platform
          DOC "Folder of the VST3 SDK's interface headers")
if(NOT ZEL_VST3_SDK)
  message(FATAL_ERROR "The VST3 SDK's headers were not found: install juce-modules-source-data or set ZEL_VST3_SDK")
endif()
