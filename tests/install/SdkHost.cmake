# Installs the build into WORK, moves the installed tree, builds the host in
# host/ against the moved tree with find_package(CorvaneWidgets) and runs it;
# then runs the moved tree's panelview.
#   BUILD_DIR  SOURCE  WORK  VERSION  BUILT_PANELVIEW  GENERATOR  CXX  LAUNCHER
#   PLUGIN     the plug-in, relative to the installation prefix
#   DATADIR    the host's data folder, relative to the installation prefix
include(${SOURCE}/Common.cmake)

file(REMOVE_RECURSE "${WORK}")
run_checked(ignored "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK}/installed")
# Nothing may depend on where the tree was installed.
file(RENAME "${WORK}/installed" "${WORK}/moved")
set(prefix "${WORK}/moved")

foreach(file include/corvane/IWidgetFactory.h include/corvane/Version.h bin/panelview)
    if(NOT EXISTS "${prefix}/${file}")
        message(FATAL_ERROR "the installed tree lacks ${file}")
    endif()
endforeach()

set(configure "${CMAKE_COMMAND}" -S "${SOURCE}/host" -B "${WORK}/host" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX}" -DCMAKE_BUILD_TYPE=Release)
if(LAUNCHER)
    list(APPEND configure "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
endif()
run_checked(ignored ${configure})
run_checked(ignored "${CMAKE_COMMAND}" --build "${WORK}/host")
file(STRINGS "${WORK}/host/CMakeCache.txt" found REGEX "^CorvaneWidgets_DIR:")
string(FIND "${found}" "${prefix}/" at)
if(NOT at GREATER -1)
    message(FATAL_ERROR "the host found another Corvane Widgets: ${found}")
endif()

run_checked(said "${WORK}/host/sdk_host")
if(NOT said STREQUAL "built a Dial with plug-in ${VERSION} from ${prefix}/${PLUGIN}\n")
    message(FATAL_ERROR "the host said: ${said}")
endif()

check_installed_panelview("${prefix}/bin/panelview" "${prefix}/${DATADIR}")
file(REMOVE_RECURSE "${WORK}")
