# Helpers of the install and package tests.

# run_checked(VAR COMMAND...): runs the command, fails the test when it ends
# with a status other than 0, leaves its standard output in VAR.
function(run_checked var)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
    if(NOT rc EQUAL 0)
        string(REPLACE ";" " " command "${ARGN}")
        message(FATAL_ERROR "${command}\nended with ${rc}\n${out}\n${err}")
    endif()
    set(${var} "${out}" PARENT_SCOPE)
endfunction()

# check_installed_panelview(PROGRAM DATA_DIR): the installed panelview checks
# the bundled demo clean, names the project version, and plays the stacked
# session exactly as the panelview of the build tree does.
function(check_installed_panelview program data)
    run_checked(version "${program}" --version)
    if(NOT version STREQUAL "panelview ${VERSION}\n")
        message(FATAL_ERROR "${program} --version says \"${version}\", not panelview ${VERSION}")
    endif()
    run_checked(findings "${program}" --check "${data}/panels/demo.xml")
    if(NOT findings STREQUAL "ok\n")
        message(FATAL_ERROR "--check on the installed demo found:\n${findings}")
    endif()
    run_checked(installed "${program}" --script "${SOURCE}/stacked.script" "${SOURCE}/stacked.xml")
    run_checked(built "${BUILT_PANELVIEW}" --script "${SOURCE}/stacked.script" "${SOURCE}/stacked.xml")
    if(NOT installed STREQUAL built OR installed STREQUAL "")
        message(FATAL_ERROR "the installed panelview played the session differently:\n${installed}\nthe build tree's:\n${built}")
    endif()
endfunction()
