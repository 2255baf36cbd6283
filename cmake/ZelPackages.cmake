# Debian packages of what is installed, one for each of its three groups; scripts/package makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zelaudiofilterhostui)
set(CPACK_PACKAGE_VENDOR "The zelaudiofilterhostui developers")
set(CPACK_PACKAGE_CONTACT "The zelaudiofilterhostui developers <zelaudiofilterhostui@localhost>"
    CACHE STRING "Whom people write to about the packages")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Whatever the mask of whoever packs: others may read what is installed, and nobody but the owner may write it.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime development tessaly)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Tells the loader of the new libraries, and packages that are linked with them what to depend on.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
# Where the packages' own libraries are while the others' needs are looked up.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(zel_exactly "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(zel_runtime libzelaudiofilterhostui${ZEL_SOVERSION})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${zel_runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "user interface around audio effect plug-ins
Editor views for VST and VST3 effects, a scanner that survives bad plug-ins
in a process of its own, and a plug-in manager, for applications that host
audio effects, with the libraries under it.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzelaudiofilterhostui-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${zel_runtime} ${zel_exactly}, libboost-dev (>= 1.81) | libboost1.81-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "qt6-base-dev (>= 6.4)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "user interface around audio effect plug-ins (for developers)
Headers, a CMake package and pkg-config files for applications that host
audio effects with libzelaudiofilterhostui. Qt is needed by applications
that put its views into windows of Qt.")

set(CPACK_DEBIAN_TESSALY_PACKAGE_NAME tessaly)
set(CPACK_DEBIAN_TESSALY_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_TESSALY_PACKAGE_DEPENDS "${zel_runtime} ${zel_exactly}")
set(CPACK_DEBIAN_TESSALY_PACKAGE_SUGGESTS "zam-plugins, lsp-plugins-vst")
set(CPACK_COMPONENT_TESSALY_DESCRIPTION "host application for audio effect plug-ins
Scans the VST and VST3 plug-ins of the machine, manages them, shows their
editors, and plays and renders a track through a chain of them, in a window
or from the command line.")

if(UNIX AND NOT APPLE)
  foreach(component runtime development tessaly)
    string(TOUPPER ${component} upper)
    set(folder ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${folder} COMPONENT ${component})
    zel_install_packed(packaging/changelog ${folder} changelog.Debian ${component})
  endforeach()
endif()

include(CPack)
