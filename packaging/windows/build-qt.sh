#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds Qt for 64-bit Windows from Debian's source packages, without what norvel has no use for:
#   build-qt.sh FOLDER     the folder, which must not exist yet, is what packaging/windows/build.sh
#                          takes for NORVEL_QT_WIN64
# Takes about half an hour on two cores and 5 GB in the folder of temporary files.

set -euo pipefail
if (($# != 1)) || [[ $1 == -* || -e $1 ]]; then
    echo "usage: $0 FOLDER" >&2
    exit 2
fi
prefix=$(realpath -m "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source packaging/linux/prepare.sh
source packaging/windows/debian-sources.sh
norvel_packages=(dpkg-dev g++ g++-mingw-w64-x86-64-posix make perl)
prepare_packages

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fetch_sources "$work" qtbase-opensource-src qtmultimedia-opensource-src

# Debian's source of qtbase has no header of Wintab, hence no tablets.
options=(
    -prefix "$prefix" -extprefix "$prefix" -hostprefix "$prefix"
    -xplatform win32-g++ -device-option CROSS_COMPILE=x86_64-w64-mingw32-
    -opensource -confirm-license -release -shared
    -no-opengl -no-pch -nomake examples -nomake tests -no-compile-examples
    -no-sql-odbc -no-sql-sqlite -no-dbus -no-icu -no-ssl -no-direct2d -no-feature-tabletevent
    -qt-zlib -qt-libpng -qt-libjpeg -qt-pcre -qt-freetype -qt-harfbuzz)
mkdir "$work/qtbase"
cd "$work/qtbase"
"$work"/qtbase-opensource-src-*/configure "${options[@]}"
make -j"$(nproc)"
make install
mkdir "$work/qtmultimedia"
cd "$work/qtmultimedia"
"$prefix/bin/qmake" "$work"/qtmultimedia-opensource-src-*/
make -j"$(nproc)"
make install
find "$prefix" -name '*.dll' -exec x86_64-w64-mingw32-strip --strip-unneeded {} +
