#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds and runs the benchmarks on Debian 12; installs the packages that are missing:
#   tools/bench.sh           all of them
#   tools/bench.sh NAME...   some of them: timeline, engine, ...
# At the end it prints the ratios with their bounds, EXCEEDED beside each that does not hold. The exit
# code is 0 if all that was measured holds. The full figures are in build/release/bench_NAME.txt.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source packaging/linux/prepare.sh

# MLT is a peer; its transitions load their profiles from libmlt-data.
norvel_packages+=(libbenchmark-dev libmlt++-dev libmlt-data libmlt-dev)

names=("$@")
if ((${#names[@]} == 0)); then
    mapfile -t names < <(sed -n 's/^add_executable(bench_\([a-z]*\).*/\1/p;
        s/^    add_executable(bench_\([a-z]*\).*/\1/p' benchmarks/CMakeLists.txt)
fi
for name in "${names[@]}"; do
    if [[ ! -f benchmarks/bench_${name#bench_}.cpp ]]; then
        say "usage: $0 [NAME...], where benchmarks/bench_NAME.cpp is the benchmark"
        exit 2
    fi
done
names=("${names[@]#bench_}")

prepare_packages || exit 1
prepare_compiler_cache
prepare_build release "${names[@]/#/bench_}"

status=0
for name in "${names[@]}"; do
    say "== bench_$name"
    build/release/bin/"bench_$name" 2>&1 | tee "build/release/bench_$name.txt" >&2 || status=1
done
for name in "${names[@]}"; do
    echo
    echo "bench_$name"
    awk '/^Ratios/ { found = 1; next } found
        END { if (!found) print "ended without a table of ratios" }' "build/release/bench_$name.txt"
done
exit $status
