# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Counts the test cases in the JUnit file of a CTest run and prints "PASSED FAILED".
#
# A test program counts by its GoogleTest cases, any other test as one case. A program that failed
# without a failed case to show for it (a crash, a leak found at its end, a timeout) is one more
# failed case, and so is a test that did not run, and one that began more cases than it ended.

/^[ \t]*<testcase / {
    good = 0
    bad = 0
    begun = 0
    ran = /status="run"/
}
/\[ RUN      \] / { ++begun }
/\[       OK \] .*\([0-9]+ ms\)$/ { ++good }
/\[  FAILED  \] .*\([0-9]+ ms\)$/ { ++bad }
/^[ \t]*<\/testcase>/ {
    passed += good || begun || !ran ? good : 1
    if (!bad && (!ran || begun > good))
        bad = 1
    failed += bad
}
END { print passed + 0, failed + 0 }
