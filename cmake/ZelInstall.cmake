# What is installed, and where. Three groups: what a program needs to run (runtime), what a host is built with
# (development), and the host application (tessaly). Nothing in it names the folder that it is installed to, so that a
# whole tree can be moved.
include(CMakePackageConfigHelpers)

set(ZEL_FRAMEWORKS zelcore zelmediatypes zeltransport zelmarshal zelui zelaudiofilterhost)
set(ZEL_LIBRARIES ${ZEL_FRAMEWORKS} zelaudiofilterhostui)
# Beside the libraries, in the folder that ScannerLocation names: several applications share one scanner.
set(ZEL_SCANNER_DIR ${CMAKE_INSTALL_LIBDIR}/zelaudiofilterhostui)
if(WIN32)
  # Where the libraries are: the system looks for them beside the program.
  set(ZEL_SCANNER_DIR ${CMAKE_INSTALL_BINDIR})
endif()
set(ZEL_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zelaudiofilterhostui)

# Programs and libraries find each other by where they lie to each other.
file(RELATIVE_PATH ZEL_BIN_TO_LIB /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
set_target_properties(${ZEL_LIBRARIES} PROPERTIES INSTALL_RPATH "\$ORIGIN")
set_target_properties(zelaudiofilterscan PROPERTIES INSTALL_RPATH "\$ORIGIN/..")
set_target_properties(tessaly PROPERTIES INSTALL_RPATH "\$ORIGIN/${ZEL_BIN_TO_LIB}")

set_target_properties(zel_boost PROPERTIES EXPORT_NAME boost)
install(TARGETS zel_boost ${ZEL_LIBRARIES} EXPORT zelaudiofilterhostui
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS zelaudiofilterscan EXPORT zelaudiofilterhostui RUNTIME DESTINATION ${ZEL_SCANNER_DIR} COMPONENT runtime)
install(TARGETS tessaly RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tessaly)

# What they need of others has no package of its own there.
if(WIN32)
  install(FILES ${ZEL_WINDOWS_RUNTIME} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  install(FILES ${ZEL_WINDOWS_PLATFORMS} DESTINATION ${CMAKE_INSTALL_BINDIR}/platforms COMPONENT runtime)
  install(FILES ${ZEL_WINDOWS_STYLES} DESTINATION ${CMAKE_INSTALL_BINDIR}/styles COMPONENT runtime)
endif()

# Dictionaries of the dialogs, and of the application.
if(EXISTS ${PROJECT_SOURCE_DIR}/resources/locale)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/locale DESTINATION ${CMAKE_INSTALL_DATADIR}/zelaudiofilterhostui
    COMPONENT runtime FILES_MATCHING PATTERN "*.json")
endif()
if(EXISTS ${PROJECT_SOURCE_DIR}/apps/tessaly/locale)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/apps/tessaly/locale DESTINATION ${CMAKE_INSTALL_DATADIR}/tessaly
    COMPONENT tessaly FILES_MATCHING PATTERN "*.json")
endif()

# For hosts: headers, the CMake package, pkg-config files.
foreach(name ${ZEL_FRAMEWORKS})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/frameworks/${name}/include/${name} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT development FILES_MATCHING PATTERN "*.h")
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zelaudiofilterhostui DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development FILES_MATCHING PATTERN "*.h")

install(EXPORT zelaudiofilterhostui NAMESPACE zelaudiofilterhostui:: FILE zelaudiofilterhostuiTargets.cmake
  DESTINATION ${ZEL_PACKAGE_DIR} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/zelaudiofilterhostuiConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/package/zelaudiofilterhostuiConfig.cmake INSTALL_DESTINATION ${ZEL_PACKAGE_DIR})
# Before version 1 each minor version may change what a host sees.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/package/zelaudiofilterhostuiConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/package/zelaudiofilterhostuiConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/package/zelaudiofilterhostuiConfigVersion.cmake
  DESTINATION ${ZEL_PACKAGE_DIR} COMPONENT development)

# zel_pkgconfig(<name> <description> <needed>...): what pkg-config tells of a library.
function(zel_pkgconfig name description)
  set(NAME ${name})
  set(DESCRIPTION "${description}")
  list(JOIN ARGN " " REQUIRES)
  file(RELATIVE_PATH PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  string(REGEX REPLACE "/$" "" PREFIX "${PREFIX}")
  # The same as CMake's package says: it must not be one thing here and another there.
  get_target_property(definitions zel_boost INTERFACE_COMPILE_DEFINITIONS)
  list(TRANSFORM definitions PREPEND "-D")
  list(JOIN definitions " " DEFINITIONS)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${CMAKE_CURRENT_BINARY_DIR}/package/${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/package/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)
endfunction()
zel_pkgconfig(zelcore "Texts, files, main loop, signals and JSON values")
zel_pkgconfig(zelmediatypes "Channel labels and layouts" zelcore)
zel_pkgconfig(zeltransport "Frames over TCP on one I/O thread" zelcore)
zel_pkgconfig(zelmarshal "JSON-RPC client and server" zelcore zeltransport)
zel_pkgconfig(zelui "Node tree, controls and dialogs on Qt" zelcore)
zel_pkgconfig(zelaudiofilterhost "Audio plug-ins, their catalogue and their scanner" zelcore zelmediatypes)
zel_pkgconfig(zelaudiofilterhostui "The user interface around audio effect plug-ins" ${ZEL_FRAMEWORKS})

# zel_install_packed(<file> <folder> <name> <group>): installs a file packed, as systems keep manuals and histories.
find_program(ZEL_GZIP gzip REQUIRED)
function(zel_install_packed file folder name component)
  set(packed ${CMAKE_CURRENT_BINARY_DIR}/package/${name}.gz)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${file})
  execute_process(COMMAND ${ZEL_GZIP} -9nc ${PROJECT_SOURCE_DIR}/${file} OUTPUT_FILE ${packed}
    COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${packed} DESTINATION ${folder} COMPONENT ${component})
endfunction()

# What a desktop shows of the application.
if(UNIX AND NOT APPLE)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tessaly.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
    COMPONENT tessaly)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tessaly.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT tessaly)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/tessaly-session.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
    COMPONENT tessaly)
  zel_install_packed(packaging/tessaly.1 ${CMAKE_INSTALL_MANDIR}/man1 tessaly.1 tessaly)
endif()
