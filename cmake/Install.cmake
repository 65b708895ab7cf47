# Installation (cmake --install), the CMake package for host writers
# (find_package(CorvaneWidgets CONFIG)) and the Debian package (cpack).
include(CMakePackageConfigHelpers)

# Installing and packaging take what was built and build nothing: the
# package test runs cpack while other tests use the build tree.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

# What a host links: the SDK target and the compiled types. Every library a
# host links joins this list; a shared one lands in the public library
# folder, which the application directory's run path below covers.
install(TARGETS corvane_sdk CorvaneTypes
    EXPORT CorvaneWidgetsTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${CORVANE_SDK_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/corvane)

# The application directory. Its binaries find each other and the public
# libraries through relative run paths, so an installed tree can be moved.
set(corvane_app_targets CorvaneWidgets CorvaneData)
if(CORVANE_BUILD_HOST)
    list(APPEND corvane_app_targets Panel CorvaneParameterDB panelview)
endif()
if(NOT WIN32)
    file(RELATIVE_PATH appdir_to_libdir /${CORVANE_INSTALL_APPDIR} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(${corvane_app_targets} PROPERTIES INSTALL_RPATH "$ORIGIN;$ORIGIN/${appdir_to_libdir}")
endif()
install(TARGETS ${corvane_app_targets}
    RUNTIME DESTINATION ${CORVANE_INSTALL_APPDIR}
    LIBRARY DESTINATION ${CORVANE_INSTALL_APPDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})

if(CORVANE_BUILD_HOST)
    install(DIRECTORY host/devices host/panels DESTINATION ${CORVANE_INSTALL_DATADIR}
        FILES_MATCHING PATTERN "*.xml")
    if(NOT WIN32)
        # bin/panelview is a link to the program in the application
        # directory: the application directory is where the program really
        # is, and there the libraries find the panel factory plug-in and the
        # parameter database next to it.
        file(RELATIVE_PATH link_target /${CMAKE_INSTALL_BINDIR} /${CORVANE_INSTALL_APPDIR}/panelview)
        file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/install-links)
        file(CREATE_LINK ${link_target} ${PROJECT_BINARY_DIR}/install-links/panelview SYMBOLIC)
        install(PROGRAMS ${PROJECT_BINARY_DIR}/install-links/panelview DESTINATION ${CMAKE_INSTALL_BINDIR})
    endif()
endif()

# Documentation keeps the source tree's shape, so that its links hold.
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES sdk/BINARY-CONTRACT.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/sdk)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The CMake package.
install(EXPORT CorvaneWidgetsTargets NAMESPACE Corvane:: DESTINATION ${CORVANE_INSTALL_CMAKEDIR})
set(CORVANE_PLUGIN_FILE ${CMAKE_SHARED_LIBRARY_PREFIX}CorvaneWidgets${CMAKE_SHARED_LIBRARY_SUFFIX})
configure_package_config_file(cmake/CorvaneWidgetsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/CorvaneWidgetsConfig.cmake
    INSTALL_DESTINATION ${CORVANE_INSTALL_CMAKEDIR}
    PATH_VARS CORVANE_INSTALL_APPDIR CMAKE_INSTALL_INCLUDEDIR)
# Before 1.0 a minor version may break the binary contract (BINARY-CONTRACT.md).
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CorvaneWidgetsConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/CorvaneWidgetsConfig.cmake ${PROJECT_BINARY_DIR}/CorvaneWidgetsConfigVersion.cmake
    DESTINATION ${CORVANE_INSTALL_CMAKEDIR})

# The Debian package: everything above under /usr; dpkg-shlibdeps works out
# the Qt runtime packages from what the binaries link.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvane-widgets)
set(CPACK_PACKAGE_VENDOR "Corvane")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Corvane Widgets: the control library of the Corvane design application, with its SDK and panelview")
set(CPACK_PACKAGE_DESCRIPTION "The widget plug-in that builds the controls of device panels, the headers and CMake package a host compiles against, and panelview, a host with a simulated device that opens, checks and scripts panel descriptions.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Corvane Widgets developers <widgets@corvane.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGE_CHECKSUM SHA256)
include(CPack)
