# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Runs PROGRAM with ARGUMENTS: it must end well and print exactly EXPECTED, where "\n" stands for
# the end of a line. EMULATOR runs the program where this machine cannot.
execute_process(COMMAND ${EMULATOR} "${PROGRAM}" ${ARGUMENTS} RESULT_VARIABLE result OUTPUT_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}, having printed:\n${output}")
endif()
string(REPLACE "\\n" "\n" EXPECTED "${EXPECTED}")
string(REPLACE "\r\n" "\n" output "${output}")
if(NOT output STREQUAL EXPECTED)
    message(FATAL_ERROR "${PROGRAM} printed:\n${output}but expected was:\n${EXPECTED}")
endif()
