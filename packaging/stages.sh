# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash

# What the scripts share that run tests in stages. Sourced with the root of the source tree as the
# working directory; all_stages names the stages. Progress goes to standard error, and the tests'
# own output to standard output.

passed=0
failed=0
times= # lines "stage seconds"
# A caller of several scripts names a file that collects the times of all.
stage_times=${NORVEL_STAGE_TIMES:-}

# parse_stages ARGUMENT...: sets stages to those that are asked for, or to all.
parse_stages() {
    local stage
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
}

# count_tests STAGE COMMAND...: runs the tests of a stage by a CTest command and counts them. A run
# that ends badly without a failed test is one failure more. The variable jobs says how many
# programs run at a time, as many as there are processors when it is not set.
count_tests() {
    local stage=$1 junit=$PWD/build/test-$1.xml good=0 bad=0 ended_well=1
    shift
    rm -f "$junit"
    "$@" --parallel "${jobs:-$(nproc)}" --output-junit "$junit" \
        --test-output-size-passed 100000000 --test-output-size-failed 100000000 || ended_well=0
    if [[ -f $junit ]]; then
        read -r good bad < <(awk -f packaging/count-tests.awk "$junit")
    fi
    if ((!ended_well && !bad)); then
        bad=1
    fi
    count "$stage" "$good" "$bad"
}

# count STAGE GOOD BAD
count() {
    passed=$((passed + $2))
    failed=$((failed + $3))
    say "== $1: $2 passed, $3 failed"
}

# run_stage STAGE FUNCTION: calls the function with the stage; that it fails is a failure more.
run_stage() {
    local start=$SECONDS
    say "== $1"
    "$2" "$1" || count "$1 cannot be run" 0 1
    say "== $1: took $((SECONDS - start)) s"
    times+="$1 $((SECONDS - start))"$'\n'
}

# print_shares: a table of lines "stage seconds", with the share of each.
print_shares() {
    awk 'NF == 2 { name[++n] = $1; took[n] = $2; sum += $2 }
        END { for (i = 1; i <= n; ++i)
            printf "%-20s %6d s %5.1f %%\n", name[i], took[i], sum ? 100 * took[i] / sum : 0 }'
}

# The shares of the stages; then the total, as the last line and as the exit code.
finish_stages() {
    if [[ -n $stage_times ]]; then
        printf '%s' "$times" >>"$stage_times"
    else
        print_shares <<<"$times" >&2
    fi
    echo "$passed passed, $failed failed"
    ((failed == 0))
}
