#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Runs a Windows program under Wine: run.sh PROGRAM.exe [ARGUMENT...]
#   NORVEL_WINE_PREFIX  the folder of Wine's drive C:, made when it is not there
#   NORVEL_WINE_PATH    further folders for programs, with ':' between them
#   NORVEL_WINE_QPA     the Qt platform plugin, in place of what QT_QPA_PLATFORM says

set -euo pipefail
export WINEPREFIX=$NORVEL_WINE_PREFIX WINEDEBUG=${WINEDEBUG:--all}
# Nothing here wants .NET or a browser. A debugger would let a program that crashes end as if all
# had been well.
export WINEDLLOVERRIDES="mscoree,mshtml,winedbg.exe="

if [[ -n ${NORVEL_WINE_QPA:-} ]]; then
    export QT_QPA_PLATFORM=$NORVEL_WINE_QPA
fi
# Wine keeps Qt's variables from programs, for they may be meant for the desktop below it, and takes
# these for theirs.
while IFS= read -r name; do
    export "WINE$name=${!name}"
done < <(compgen -e QT_ || true)

folders=${NORVEL_WINE_PATH:-}
folders=${folders:+Z:${folders//:/;Z:}}
export WINEPATH=${folders//\//\\}
exec wine "$@"
