#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Compares what a built library exports with the list norvel/exports.txt:
#   exports.sh LIBRARY           libnorvel.so or norvel.dll; prints the differences, and exits with 1
#                                if there are any
#   exports.sh --write LIBRARY   writes the list anew, from libnorvel.so
# Names stand in the list as C++ has them, without the types of symbols: one line covers all
# variants of a constructor.

set -euo pipefail
export LC_ALL=C
list=$(dirname "${BASH_SOURCE[0]}")/../norvel/exports.txt

# Weak functions (W) are inline ones and instances of templates: which of them a library holds is the
# compiler's choice, and every user of them has its own. So is the type information of functions. The
# linker marks the ends of its sections with names of its own.
so_names() {
    nm -D --defined-only "$1" | awk '$2 != "W" { print $3 }' | c++filt |
        grep -vE '^typeinfo.*\(|^(__bss_start|_edata|_end)$' | sort -u
}

dll_names() {
    x86_64-w64-mingw32-objdump -p "$1" |
        awk '/\[Ordinal\/Name Pointer\] Table/ { f = 1; next } !NF { f = 0 } f { print $NF }' |
        c++filt | sort -u
}

listed_names() {
    grep -v '^#' "$list"
}

# What differs by the nature of the two systems: 64 bits are long on Linux and long long on Windows,
# Qt hides one function of each class on Linux alone, and a nested class is exported with the class
# around it on Linux alone.
common_names() {
    sed 's/long long/long/g' | awk '{ name = $0; sub(/^norvel::/, "", name) }
        name !~ /::qt_static_metacall\(/ && name !~ /^[A-Za-z]+::[A-Za-z]+::/' | sort -u
}

differences() {
    local missing=$1 extra=$2
    [[ -z $missing ]] || printf 'not exported:\n%s\n' "$missing"
    [[ -z $extra ]] || printf 'exported, but not in the list:\n%s\n' "$extra"
    [[ -z $missing$extra ]]
}

compare_so() {
    local names
    names=$(so_names "$1")
    differences "$(comm -13 <(echo "$names") <(listed_names))" \
        "$(comm -23 <(echo "$names") <(listed_names))"
}

# Virtual tables and type information are in the DLL's exports only where the compiler wants them.
compare_dll() {
    local names
    names=$(dll_names "$1" | common_names)
    differences \
        "$(comm -13 <(echo "$names") <(listed_names | grep -vE '^(vtable|typeinfo)' | common_names))" \
        "$(comm -23 <(echo "$names") <(listed_names | common_names))"
}

case ${1:-} in
    --write)
        names=$(so_names "$2")
        header=$(grep '^#' "$list")
        printf '%s\n' "$header" "$names" >"$list"
        ;;
    *.dll) compare_dll "$1" ;;
    *) compare_so "${1:?usage: exports.sh [--write] LIBRARY}" ;;
esac
