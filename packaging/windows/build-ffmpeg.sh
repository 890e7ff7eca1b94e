#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds FFmpeg's libraries for 64-bit Windows from Debian's source package, as shared libraries
# under the LGPL 2.1:
#   build-ffmpeg.sh FOLDER     the folder, which must not exist yet, is what
#                              packaging/windows/build.sh takes for NORVEL_FFMPEG_WIN64
# Takes about 20 minutes on two cores and 1 GB in the folder of temporary files.

set -euo pipefail
if (($# != 1)) || [[ $1 == -* || -e $1 ]]; then
    echo "usage: $0 FOLDER" >&2
    exit 2
fi
prefix=$(realpath -m "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source packaging/linux/prepare.sh
source packaging/windows/debian-sources.sh
norvel_packages=(dpkg-dev gcc gcc-mingw-w64-x86-64-posix libz-mingw-w64-dev make nasm)
prepare_packages

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fetch_sources "$work" ffmpeg
sources=$(find "$work" -mindepth 1 -maxdepth 1 -type d -name 'ffmpeg-*')

# PNG takes zlib, which becomes a part of the DLLs: the linker finds nothing here but the archive.
mkdir "$work/zlib"
cp /usr/x86_64-w64-mingw32/lib/libz.a "$work/zlib"

# Only local files are read and written. pkg-config would find libraries of this machine.
options=(
    "--prefix=$prefix"
    --enable-cross-compile --cross-prefix=x86_64-w64-mingw32- --arch=x86_64 --target-os=mingw32
    --enable-shared --disable-static --disable-programs --disable-doc
    --disable-avdevice --disable-network --disable-debug --pkg-config=false
    --enable-zlib "--extra-ldflags=-L$work/zlib")
mkdir "$work/build"
cd "$work/build"
"$sources/configure" "${options[@]}"
make -j"$(nproc)"
make install
x86_64-w64-mingw32-strip --strip-unneeded "$prefix"/bin/*.dll

# So that the folder can be moved.
# shellcheck disable=SC2016 # a variable of pkg-config
sed -i -e 's|^prefix=.*|prefix=${pcfiledir}/../..|' -e "s|$prefix|\${prefix}|g" \
    "$prefix"/lib/pkgconfig/*.pc
cp "$sources"/{COPYING.LGPLv2.1,LICENSE.md} "$prefix"
