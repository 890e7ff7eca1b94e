# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash

# What run.sh and test.sh share: the Debian packages they need and the builds by preset. Sourced
# with the root of the source tree as the working directory; progress goes to standard error.

norvel_packages=(
    ccache
    cmake
    ffmpeg
    fonts-noto-cjk
    g++
    gstreamer1.0-plugins-bad
    gstreamer1.0-plugins-base
    gstreamer1.0-plugins-good
    libavcodec-dev
    libavfilter-dev
    libavformat-dev
    libavutil-dev
    libgtest-dev
    libqt5multimedia5-plugins
    libswresample-dev
    libswscale-dev
    locales
    ninja-build
    pkg-config
    pulseaudio
    pulseaudio-utils
    qtbase5-dev
    qtmultimedia5-dev
)

say() {
    printf '%s\n' "$*" >&2
}

missing_packages() {
    local package
    for package in "${norvel_packages[@]}"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            printf '%s\n' "$package"
    done
}

# Installs the missing packages; asks the archive only when there are any. Without the right to
# install it names them and gives up.
prepare_packages() {
    local missing as_root=()
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        say "No Debian packages here; needed is what Debian calls: ${norvel_packages[*]}"
        return 0
    fi
    mapfile -t missing < <(missing_packages)
    ((${#missing[@]})) || return 0
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null || ! sudo -n true 2>/dev/null; then
            say "Missing packages: ${missing[*]}"
            return 1
        fi
        as_root=(sudo -n)
    fi
    say "Installing ${missing[*]}"
    # A foreign archive that does not answer is no reason to stop: the installation tells.
    "${as_root[@]}" apt-get update -qq >&2 || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# Lets builds of several presets, and of several checkouts, share what ccache keeps.
prepare_compiler_cache() {
    CCACHE_BASEDIR=$PWD
    CCACHE_NOHASHDIR=1
    # Without these it keeps nothing that is compiled with precompiled headers.
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    export CCACHE_BASEDIR CCACHE_NOHASHDIR CCACHE_SLOPPINESS
}

# prepare_build PRESET [TARGET...]: configures what is not configured yet, and builds.
prepare_build() {
    local preset=$1 targets=()
    shift
    (($# == 0)) || targets=(--target "$@")
    if [[ ! build/$preset/build.ninja -nt CMakePresets.json ]]; then
        cmake --preset "$preset" >&2 || return
    fi
    cmake --build --preset "$preset" "${targets[@]}" >&2
}
