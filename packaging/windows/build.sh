#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds norvel for 64-bit Windows on Debian 12, which it brings what is missing, packs it as
# build/windows/norvel-VERSION-win64.zip and tests it under Wine:
#   build.sh            all stages
#   build.sh STAGE...   some of them: package, checks, tests, chinese, windows-platform, recording
# The last line is the total of all stages, "N passed, N failed"; the exit code tells whether all
# was well.
#   NORVEL_QT_WIN64     Qt for Windows: a folder, or an archive of one. Without it the one in the
#                       cache folder is taken, and built there first when it is not there
#   NORVEL_FFMPEG_WIN64 FFmpeg for Windows, in the same way

set -euo pipefail
here=packaging/windows
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source packaging/linux/prepare.sh
source packaging/stages.sh
source $here/package.sh
source $here/checks.sh

all_stages=(package checks tests chinese windows-platform recording)
build=$PWD/build/windows
wine=$PWD/$here/wine/run.sh
cache=${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/norvel
version=$(sed -n 's/^project(norvel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package=norvel-$version-win64
norvel_packages+=(
    binutils
    fonts-dejavu-core
    fonts-noto-cjk
    g++-mingw-w64-x86-64-posix
    googletest
    unzip
    wine
    wine64
    xvfb
    xz-utils
    zip
)

# find_ready NAME NAMED FILE SCRIPT: sets ready to the folder of what was built for Windows before.
# That is the folder or archive NAMED, or, if that is empty, NAME in the cache folder, where SCRIPT
# builds it if it is not there. FILE is in every such folder.
find_ready() {
    local name=$1 named=$2 file=$3 script=$4
    ready=${named:-$cache/$name-win64}
    if [[ -f $ready ]]; then
        local unpacked=$build/$name
        if [[ ! $unpacked/.unpacked -nt $ready ]]; then
            rm -rf "$unpacked"
            mkdir -p "$unpacked"
            tar -C "$unpacked" --strip-components=1 -xf "$ready"
            touch "$unpacked/.unpacked"
        fi
        ready=$unpacked
    elif [[ ! -d $ready && -z $named ]]; then
        say "$ready is not there: building it, which takes half an hour or more"
        mkdir -p "$cache"
        "$here/$script" "$ready" >&2
    fi
    if [[ ! -f $ready/$file ]]; then
        say "$ready has no $file"
        return 1
    fi
}

# Sets qt and ffmpeg to the folders of Qt and FFmpeg for Windows.
find_qt() {
    find_ready qt "${NORVEL_QT_WIN64:-}" bin/Qt5Core.dll build-qt.sh && qt=$ready
}
find_ffmpeg() {
    find_ready ffmpeg "${NORVEL_FFMPEG_WIN64:-}" lib/pkgconfig/libavcodec.pc build-ffmpeg.sh &&
        ffmpeg=$ready
}

# configure FOLDER SOURCE OPTION...: a build for Windows in build/windows/FOLDER.
configure() {
    local folder=$build/$1 source=$2
    shift 2
    cmake -S "$source" -B "$folder" -G Ninja \
        "-DCMAKE_TOOLCHAIN_FILE=$PWD/$here/mingw-w64.cmake" \
        "-DCMAKE_CROSSCOMPILING_EMULATOR=$wine" \
        -DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG" "$@" >&2
}

build_googletest() {
    [[ ! -f $build/googletest/lib/libgtest.a ]] || return 0
    configure googletest-build /usr/src/googletest -DBUILD_GMOCK=OFF \
        "-DCMAKE_INSTALL_PREFIX=$build/googletest" &&
        cmake --build "$build/googletest-build" >&2 &&
        cmake --install "$build/googletest-build" >&2
}

# build_norvel [TARGET...]: norvel in build/windows/norvel. One build serves the zip and the tests.
build_norvel() {
    local remembered=$build/norvel/CMakeCache.txt targets=()
    local prefixes="$qt;$ffmpeg;$build/googletest"
    (($# == 0)) || targets=(--target "$@")
    # CMake continues with the Qt and the FFmpeg that it found first.
    if [[ -f $remembered ]] && ! grep -qxF "NORVEL_WINDOWS_PREFIXES:UNINITIALIZED=$prefixes" "$remembered"; then
        rm "$remembered"
    fi
    build_googletest && configure norvel . -DNORVEL_ENGINE=ffmpeg \
        "-DNORVEL_WINDOWS_PREFIXES=$prefixes" &&
        cmake --build "$build/norvel" "${targets[@]}" >&2
}

# The programs that tests run, as programs of Windows: the machine's own, see UnixProgram.cpp.
build_unix_programs() {
    mkdir -p "$build/programs"
    x86_64-w64-mingw32-g++-posix -std=c++17 -O1 -static -Wall -Wextra -Werror \
        $here/wine/UnixProgram.cpp -o "$build/programs/ffmpeg.exe" -lshell32 &&
        cp "$build/programs/ffmpeg.exe" "$build/programs/ffprobe.exe"
}

# A screen that nobody sees, for Wine as a whole: it takes the one that is there when it starts.
start_display() {
    local number=$build/display
    rm -f "$number"
    Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp 3>"$number" 2>/dev/null &
    display_server=$!
    timeout 20 bash -c "until [[ -s '$number' ]]; do sleep 0.1; done"
    DISPLAY=:$(cat "$number")
    export DISPLAY
}

start_wine() {
    export NORVEL_WINE_PREFIX=$build/wine NORVEL_WINE_PATH=$build/programs
    mkdir -p "$NORVEL_WINE_PREFIX"
    start_display
    # Stays between programs, which start sooner then. One that an earlier run left stays too.
    WINEPREFIX=$NORVEL_WINE_PREFIX wineserver -p || true
    trap 'WINEPREFIX=$NORVEL_WINE_PREFIX wineserver -k || true; kill "$display_server"' EXIT
    [[ -f $NORVEL_WINE_PREFIX/system.reg ]] || "$wine" wineboot -i >/dev/null 2>&1
    # The first program brings Wine's services with it, which hold its output open: none that is
    # waited for may be the first.
    tail -f /dev/null --pid=$$ | "$wine" cmd >/dev/null 2>&1 &
    "$wine" cmd /c exit </dev/null >/dev/null 2>&1
    # The share that Windows has of every drive.
    mkdir -p "$NORVEL_WINE_PREFIX/dosdevices/unc/localhost"
    ln -sfn "$NORVEL_WINE_PREFIX/drive_c" "$NORVEL_WINE_PREFIX/dosdevices/unc/localhost/C\$"
    # No window manager is there, for whose answer Wine would wait two seconds with every window.
    "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f </dev/null >/dev/null 2>&1
}

stage_package() {
    build_norvel norvel norvel-embedding norvel-tour &&
        make_package "$qt" "$ffmpeg" "$build/norvel" "$build/$package" >&2 || return
    (cd "$build" && rm -f "$package.zip" && zip -qr "$package.zip" "$package") || return
    say "$build/$package.zip: $(stat -c %s "$build/$package.zip") bytes"
}

# What the zip holds is tried as it is, far from where it was built.
stage_checks() {
    local unpacked=$build/unpacked
    rm -rf "$unpacked"
    unzip -q "$build/$package.zip" -d "$unpacked" || return
    run_checks "$unpacked/$package"
}

prepare_tests() {
    build_norvel && build_unix_programs && deploy_runtime "$qt" "$ffmpeg" "$build/norvel"
}

stage_tests() {
    local status=0
    prepare_tests || return
    count_tests windows-offscreen ctest --test-dir "$build/norvel" --output-on-failure \
        --label-exclude '^(packages|recording)$' || status=$?
    say "Left out:"
    sed 's/^/    /' "$build/norvel/left-out-tests.txt" >&2
    sed -n 's/^Left out: /    /p' build/test-windows-offscreen.xml | sort -u >&2 || true
    return $status
}

# Paths and texts on a Windows whose 8-bit encoding is that of simplified Chinese: Wine takes it from
# the locale, which is made for it.
stage_chinese() {
    local locales=$build/locales
    prepare_tests || return
    mkdir -p "$locales"
    # It warns of what other encodings would make of the names.
    localedef -c -i zh_CN -f UTF-8 "$locales/zh_CN.UTF-8" 2>/dev/null || true
    LOCPATH=$locales LC_ALL=zh_CN.UTF-8 count_tests "$1" ctest --test-dir "$build/norvel" \
        --output-on-failure --tests-regex '^(framework|systemstatus|timeline|tour)_test$'
}

# The widgets in windows of Windows; one program at a time, for there is one pointer and one focus.
stage_windows_platform() {
    prepare_tests || return
    jobs=1 NORVEL_WINE_QPA=windows count_tests "$1" ctest --test-dir "$build/norvel" --output-on-failure \
        --label-regex '^widgets$' --label-exclude '^recording$'
}

# The recorder and the player with sound: Wine records and plays by a sound server that is made for
# it, with a tone at its input. What it plays is recorded in turn.
stage_recording() {
    local folder tone=440 status=0
    prepare_tests || return
    folder=$(mktemp -d)
    export PULSE_SERVER=unix:$folder/socket
    HOME=$folder XDG_RUNTIME_DIR=$folder XDG_CONFIG_HOME=$folder pulseaudio -n --daemonize=no \
        --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes \
        -L "module-native-protocol-unix auth-anonymous=1 socket=$folder/socket" \
        -L "module-null-sink sink_name=norvel_input" \
        -L "module-null-sink sink_name=norvel_output rate=48000" >&2 &
    local programs=($!)
    timeout 20 bash -c 'until pactl list short sinks 2>/dev/null | grep -q output; do sleep 0.1; done'
    pactl set-default-source norvel_input.monitor
    pactl set-default-sink norvel_output
    ffmpeg -v error -nostdin -re -f lavfi -i "aevalsrc=0.5*sin(2*PI*$tone*t):s=48000" \
        -f pulse -buffer_duration 40 -device norvel_input tone >&2 &
    programs=($! "${programs[@]}")
    parec --device=norvel_output.monitor --format=s16le --rate=48000 --channels=2 \
        --latency-msec=20 >"$folder/played" &
    programs=($! "${programs[@]}")
    NORVEL_TONE=$tone NORVEL_PLAYED_SOUND=Z:$folder/played jobs=1 count_tests "$1" \
        ctest --test-dir "$build/norvel" --output-on-failure --label-regex '^recording$' || status=$?
    kill "${programs[@]}"
    wait "${programs[@]}" || true
    rm -rf "$folder"
    unset PULSE_SERVER
    return $status
}

parse_stages "$@"
prepare_packages || exit 1
prepare_compiler_cache
find_qt || exit 1
find_ffmpeg || exit 1
start_wine
for stage in "${stages[@]}"; do
    run_stage "$stage" "stage_${stage//-/_}"
done
finish_stages
