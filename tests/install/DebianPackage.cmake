# Builds the Debian package with the build's CPack configuration, checks its
# runtime dependencies, unpacks it into a scratch root with dpkg -x and runs
# the panelview it holds.
#   BUILD_DIR  SOURCE  WORK  VERSION  BUILT_PANELVIEW  DATADIR
include(${SOURCE}/Common.cmake)

foreach(tool dpkg-deb dpkg-shlibdeps file)
    find_program(found_${tool} ${tool})
    if(NOT found_${tool})
        # CTest counts this as skipped (SKIP_REGULAR_EXPRESSION).
        message("SKIPPED: ${tool} is not installed (Debian: dpkg-dev, file)")
        return()
    endif()
endforeach()

file(REMOVE_RECURSE "${WORK}")
get_filename_component(cmake_bin "${CMAKE_COMMAND}" DIRECTORY)
run_checked(ignored "${cmake_bin}/cpack" --config "${BUILD_DIR}/CPackConfig.cmake" -G DEB -B "${WORK}")
file(GLOB packages "${WORK}/*.deb")
list(LENGTH packages count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "cpack wrote ${count} packages: ${packages}")
endif()

run_checked(name dpkg-deb --field "${packages}" Package)
run_checked(version dpkg-deb --field "${packages}" Version)
if(NOT name STREQUAL "corvane-widgets\n" OR NOT version STREQUAL "${VERSION}\n")
    message(FATAL_ERROR "the package is ${name} ${version}, not corvane-widgets ${VERSION}")
endif()
# The Qt libraries the binaries link, each with a version from its shlibs.
run_checked(depends dpkg-deb --field "${packages}" Depends)
foreach(package libqt5core5a libqt5gui5 libqt5widgets5 libqt5xml5 libqt5svg5 libc6 libstdc\\+\\+6)
    if(NOT depends MATCHES "(^|, )${package}(:[a-z0-9]+)? \\(>= [^)]+\\)")
        message(FATAL_ERROR "the package does not depend on ${package}: ${depends}")
    endif()
endforeach()

set(root "${WORK}/root")
run_checked(ignored dpkg -x "${packages}" "${root}")
foreach(file usr/bin/panelview usr/include/corvane/IWidgetCore.h usr/share/doc/corvane-widgets/CHANGELOG.md)
    if(NOT EXISTS "${root}/${file}")
        message(FATAL_ERROR "the package lacks /${file}")
    endif()
endforeach()
# Nothing in the package may reach back into the build tree.
file(GLOB_RECURSE binaries "${root}/usr/lib/*.so" "${root}/usr/lib/*/panelview")
foreach(binary ${binaries})
    file(STRINGS "${binary}" leaks REGEX "${BUILD_DIR}")
    if(leaks)
        message(FATAL_ERROR "${binary} names the build tree: ${leaks}")
    endif()
endforeach()

check_installed_panelview("${root}/usr/bin/panelview" "${root}/usr/${DATADIR}")
file(REMOVE_RECURSE "${WORK}")
