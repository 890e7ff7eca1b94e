#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds norvel-tour on Debian 12, which it brings what is missing, and runs it with the given
# arguments: ./run.sh --help

set -euo pipefail
here=$(dirname "${BASH_SOURCE[0]}")
start=$PWD
cd "$here"
source packaging/linux/prepare.sh

prepare_packages || exit 1
prepare_compiler_cache
prepare_build dev norvel-tour
tour=$PWD/build/dev/bin/norvel-tour
cd "$start" # where paths among the arguments begin
exec "$tour" "$@"
