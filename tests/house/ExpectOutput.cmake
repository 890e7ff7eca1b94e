# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Runs PROGRAM with ARGUMENTS: it must end well and print exactly EXPECTED, where "\n" stands for
# the end of a line.
execute_process(COMMAND "${PROGRAM}" ${ARGUMENTS} RESULT_VARIABLE result OUTPUT_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}, having printed:\n${output}")
endif()
string(REPLACE "\\n" "\n" EXPECTED "${EXPECTED}")
if(NOT output STREQUAL EXPECTED)
    message(FATAL_ERROR "${PROGRAM} printed:\n${output}but expected was:\n${EXPECTED}")
endif()
