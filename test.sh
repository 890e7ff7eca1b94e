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

all_stages=(dev asan-ubsan tsan engine-none packages)
passed=0
failed=0

# The stage builds what its preset builds; the packages are made of the build of dev.
preset_of() {
    if [[ $1 == packages ]]; then echo dev; else echo "$1"; fi
}

# The tests of a stage, counted. A run that ends badly without a failed test is one failure more.
run_tests() {
    local stage=$1 junit=$PWD/build/test-$1.xml good=0 bad=0 ended_well=1
    rm -f "$junit"
    ctest --preset "$stage" --parallel "$(nproc)" --output-junit "$junit" \
        --test-output-size-passed 100000000 --test-output-size-failed 100000000 || ended_well=0
    if [[ -f $junit ]]; then
        read -r good bad < <(awk -f packaging/linux/count-tests.awk "$junit")
    fi
    if ((!ended_well && !bad)); then
        bad=1
    fi
    passed=$((passed + good))
    failed=$((failed + bad))
    say "== $stage: $good passed, $bad failed"
}

run_stage() {
    local stage=$1 start=$SECONDS
    say "== $stage"
    if prepare_build "$(preset_of "$stage")"; then
        say "== $stage: built in $((SECONDS - start)) s"
        run_tests "$stage"
    else
        failed=$((failed + 1))
        say "== $stage: does not build"
    fi
    say "== $stage: took $((SECONDS - start)) s"
}

stages=("$@")
if (($# == 0)) || [[ $* == all ]]; then
    stages=("${all_stages[@]}")
fi
for stage in "${stages[@]}"; do
    if [[ " ${all_stages[*]} " != *" $stage "* ]]; then
        say "usage: $0 [all | $(IFS='|'; echo "${all_stages[*]}")]..."
        exit 2
    fi
done

# The sanitizers of GCC 12 do not start where the kernel randomises more address bits than this.
random_bits=$(cat /proc/sys/vm/mmap_rnd_bits 2>/dev/null || echo 0)
if ((random_bits > 28)) && setarch "$(uname -m)" -R true 2>/dev/null &&
    [[ -z ${NORVEL_FIXED_ADDRESSES:-} ]]; then
    NORVEL_FIXED_ADDRESSES=1 exec setarch "$(uname -m)" -R ./test.sh "$@"
fi

prepare_packages || exit 1
prepare_compiler_cache
for stage in "${stages[@]}"; do
    run_stage "$stage"
done
echo "$passed passed, $failed failed"
((failed == 0))
