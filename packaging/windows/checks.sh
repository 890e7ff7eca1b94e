# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash

# Checks of the unpacked zip. Sourced by build.sh.

# What 64-bit Windows has itself, of what Qt, FFmpeg and the compiler's runtime use.
windows_dlls=(
    advapi32 bcrypt comctl32 comdlg32 crypt32 d3d9 d3d11 dnsapi dwmapi dwrite dxgi dxva2 evr gdi32 imm32
    iphlpapi kernel32 mf mfplat mfreadwrite mpr msvcrt netapi32 ole32 oleaut32 propsys shell32
    shlwapi strmiids user32 userenv uxtheme version winmm winspool.drv ws2_32 wtsapi32
)

# The DLL exports what norvel/exports.txt lists.
check_exports() {
    packaging/exports.sh "$1/bin/norvel.dll" >&2
}

# Every DLL that something in the zip needs is in the zip or Windows' own.
check_dlls() {
    local folder=$1 file needed known well=0
    known=$(printf '%s\n' "${windows_dlls[@]/%/.dll}" winspool.drv
        find "$folder" -iname '*.dll' -printf '%f\n' | tr '[:upper:]' '[:lower:]')
    while IFS= read -r file; do
        while IFS= read -r needed; do
            if ! grep -qxF "${needed,,}" <<<"$known"; then
                say "${file#"$folder"/} needs $needed"
                well=1
            fi
        done < <(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/^.*DLL Name: //p')
    done < <(find "$folder" -name '*.dll' -o -name '*.exe')
    return $well
}

# A program that is linked with nothing of it loads the DLL by its path alone.
check_load_library() {
    local folder=$1 program=$build/load/load_library.exe
    mkdir -p "${program%/*}"
    x86_64-w64-mingw32-g++-posix -std=c++17 -static -Wall -Wextra -Werror \
        $here/LoadLibrary.cpp -o "$program" || return
    (cd "${program%/*}" && "$wine" "$program" "Z:${folder//\//\\}\\bin\\norvel.dll") >&2
}

# A project that knows nothing but the zip.
check_consumer() {
    local folder=$1
    configure consumer tests/consumer "-DNORVEL_WINDOWS_PREFIXES=$folder" || return
    cmake --build "$build/consumer" >&2 || return
    local program
    for program in norvel-consumer framework-consumer; do
        cp "$build/consumer/$program.exe" "$folder/bin"
        QT_QPA_PLATFORM=offscreen "$wine" "$folder/bin/$program.exe" >&2 || return
    done
}

# A program with a user interface finds Qt's plugins in the zip.
check_embedding() {
    local folder=$1 picture=$build/picture.ppm expected=$'after undo: alpha 1.00\nafter redo: alpha 0.25'
    printf 'P3\n2 1\n255\n255 0 0  0 0 255\n' >"$picture"
    cp "$build/norvel/bin/norvel-embedding.exe" "$folder/bin"
    local printed
    printed=$(QT_QPA_PLATFORM=offscreen "$wine" "$folder/bin/norvel-embedding.exe" "Z:$picture")
    say "$printed"
    [[ ${printed//$'\r'/} == "$expected" ]]
}

# The licence of FFmpeg goes with its DLLs.
check_licenses() {
    local folder=$1
    [[ -f $folder/bin/avcodec-59.dll && -f $folder/LICENSE ]] &&
        grep -q 'GNU LESSER GENERAL PUBLIC LICENSE' "$folder/licenses/ffmpeg/COPYING.LGPLv2.1"
}

# The program of the zip edits real files, and refuses one that only has the name of a video.
check_tour() {
    local folder=$1 files=$build/tour-files make=(ffmpeg -v error -nostdin -y -f lavfi) printed
    mkdir -p "$files"
    "${make[@]}" -i testsrc=size=320x180:rate=25:duration=3 -f lavfi -i sine=duration=3 \
        -pix_fmt yuv420p "$files/video.mp4" >&2 || return
    "${make[@]}" -i testsrc=size=160x120 -frames:v 1 "$files/picture.png" >&2 || return
    "${make[@]}" -i sine=duration=2 "$files/sound.wav" >&2 || return
    QT_QPA_PLATFORM=offscreen "$wine" "$folder/bin/norvel-tour.exe" "Z:$files/picture.png" \
        "Z:$files/video.mp4" "Z:$files/sound.wav" >&2 || return
    printf '\0\0\0\024ftypisom\0\0\002\0isom' >"$files/empty.mp4"
    printed=$(QT_QPA_PLATFORM=offscreen "$wine" "$folder/bin/norvel-tour.exe" \
        "Z:$files/empty.mp4" 2>&1) && return 1
    [[ $printed == *"neither a video nor a picture nor a sound"* ]]
}

# run_checks FOLDER: all checks of the unpacked zip.
run_checks() {
    local name good=0 bad=0
    for name in exports dlls licenses load_library consumer embedding tour; do
        if "check_$name" "$@"; then
            say "   $name: passed"
            good=$((good + 1))
        else
            say "   $name: FAILED"
            bad=$((bad + 1))
        fi
    done
    count checks "$good" "$bad"
}
