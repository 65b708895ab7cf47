# Writes the panel schema with panelview and validates panels against it
# with xmllint.
#   PANELVIEW  the program
#   WORKDIR    where the schema is written
#   VALID      panel files (separated by "|") that must validate
#   INVALID    panel files that must not
find_program(XMLLINT xmllint)
if(NOT XMLLINT)
    message(FATAL_ERROR "xmllint not found (Debian: libxml2-utils)")
endif()
set(schema "${WORKDIR}/panel.xsd")
execute_process(COMMAND "${PANELVIEW}" --schema OUTPUT_FILE "${schema}" RESULT_VARIABLE rc TIMEOUT 120)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "panelview --schema failed (${rc})")
endif()
string(REPLACE "|" ";" valid "${VALID}")
string(REPLACE "|" ";" invalid "${INVALID}")
set(failed "")
foreach(panel IN LISTS valid)
    execute_process(COMMAND "${XMLLINT}" --noout --schema "${schema}" "${panel}"
        RESULT_VARIABLE rc ERROR_VARIABLE err OUTPUT_QUIET)
    if(NOT rc EQUAL 0)
        string(APPEND failed "${err}")
    endif()
endforeach()
foreach(panel IN LISTS invalid)
    execute_process(COMMAND "${XMLLINT}" --noout --schema "${schema}" "${panel}"
        RESULT_VARIABLE rc OUTPUT_QUIET ERROR_QUIET)
    if(rc EQUAL 0)
        string(APPEND failed "${panel} validates, but must not\n")
    endif()
endforeach()
list(LENGTH valid count)
if(failed)
    message(FATAL_ERROR "${failed}")
endif()
message(STATUS "${count} panels validate")
