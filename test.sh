#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds and runs the tests on Debian 12, which it brings what is missing:
#   ./test.sh            all stages
#   ./test.sh STAGE...   some of them: dev, asan-ubsan, tsan, engine-none, packages
# The last line is the total of all stages, "N passed, N failed"; the exit code tells whether all
# was well.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source packaging/linux/prepare.sh
source packaging/stages.sh

all_stages=(dev asan-ubsan tsan engine-none packages)

# The stage builds what its preset builds; the packages are made of the build of dev.
preset_of() {
    if [[ $1 == packages ]]; then echo dev; else echo "$1"; fi
}

build_and_test() {
    local start=$SECONDS
    prepare_build "$(preset_of "$1")" || return
    say "== $1: built in $((SECONDS - start)) s"
    count_tests "$1" ctest --preset "$1"
}

parse_stages "$@"

# The sanitizers of GCC 12 do not start where the kernel randomises more address bits than this.
random_bits=$(cat /proc/sys/vm/mmap_rnd_bits 2>/dev/null || echo 0)
if ((random_bits > 28)) && setarch "$(uname -m)" -R true 2>/dev/null &&
    [[ -z ${NORVEL_FIXED_ADDRESSES:-} ]]; then
    NORVEL_FIXED_ADDRESSES=1 exec setarch "$(uname -m)" -R ./test.sh "$@"
fi

prepare_packages || exit 1
prepare_compiler_cache
for stage in "${stages[@]}"; do
    run_stage "$stage" build_and_test
done
finish_stages
