# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# What the scripts that try the installed packages have in common.

# What the caller's environment says about libraries must not help the installed ones to be found.
set(ENV{LD_LIBRARY_PATH} "")
set(ENV{QT_QPA_PLATFORM} offscreen)

# run(<command>...): prints and runs a command, which must end well. What it printed to standard
# output is in OUTPUT, and what it logged in ERRORS: Qt may have a word of its own there.
macro(run)
    string(REPLACE ";" " " line "${ARGN}")
    message(STATUS "${line}")
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE OUTPUT
        ERROR_VARIABLE ERRORS)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "ended with ${result}:\n${OUTPUT}${ERRORS}")
    endif()
endmacro()

# expect_consumer_output(): norvel-consumer has printed the timeline twice, and the version.
function(expect_consumer_output)
    foreach(text "RvEditorTrace Attribute : {" "RvEditorTrace Timeline : {" "\"alpha\": 0.5"
            "norvel ${VERSION}\n")
        string(FIND "${OUTPUT}${ERRORS}" "${text}" place)
        if(place EQUAL -1)
            message(FATAL_ERROR "the consumer did not print '${text}' but:\n${OUTPUT}${ERRORS}")
        endif()
    endforeach()
endfunction()
