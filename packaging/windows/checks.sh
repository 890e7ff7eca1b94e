# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash

# Checks of the unpacked zip. Sourced by build.sh.

# The classes that norvel exports. A class without a symbol of its own in the library for Linux, of
# fields alone, has none in the DLL either.
norvel_exported_classes=(
    LabPaintMaskView
    LabTouchMaskView
    QLabComparePlayer
    QLabPlayer
    RecorderWgt
    RvTrackMaskWidget
    norvel::CanvasViewer
    norvel::CanvasViewerWidget
    norvel::RvARAttribute
    norvel::RvARBeautyAttribute
    norvel::RvARFilterAttribute
    norvel::RvARFrameAttribute
    norvel::RvARLabelAttribute
    norvel::RvARLayerAttribute
    norvel::RvARLiquifyAttribute
    norvel::RvARMakeupAttribute
    norvel::RvAttribute
    norvel::RvAttributeUtility
    norvel::RvAudioAttribute
    norvel::RvDetectAttribute
    norvel::RvEditorCacheData
    norvel::RvEditorTrace
    norvel::RvEffectAttribute
    norvel::RvMatteAttribute
    norvel::RvMediaAttribute
    norvel::RvTimeLineAttribute
    norvel::RvTrackFactory
    systemstatus
)

# What 64-bit Windows has itself, of what Qt and the compiler's runtime use.
windows_dlls=(
    advapi32 comctl32 comdlg32 crypt32 d3d9 d3d11 dnsapi dwmapi dwrite dxgi dxva2 evr gdi32 imm32
    iphlpapi kernel32 mf mfplat mfreadwrite mpr msvcrt netapi32 ole32 oleaut32 propsys shell32
    shlwapi strmiids user32 userenv uxtheme version winmm winspool.drv ws2_32 wtsapi32
)

# The names of an export table, as C++ has them. What is 64 bits wide is long long on Windows and
# may be long on Linux.
dll_exports() {
    x86_64-w64-mingw32-objdump -p "$1" |
        awk '/\[Ordinal\/Name Pointer\] Table/ { f = 1; next } f && !NF { exit } f { print $NF }' |
        as_cpp_names | without_peculiarities
}

# The names of a shared library's symbols of these nm types.
library_exports() {
    nm -D --defined-only "$1" | awk -v types="$2" 'index(types, $2) { print $3 }' | as_cpp_names |
        without_peculiarities
}

as_cpp_names() {
    c++filt | sed 's/long long/long/g' | LC_ALL=C sort -u
}

# Takes away what differs by the nature of the two systems: Qt hides one function of each class on
# Linux alone, and a class within a class is exported with it on Linux alone.
without_peculiarities() {
    local classes
    classes=$(IFS='|'; echo "${norvel_exported_classes[*]}")
    grep -vE "::qt_static_metacall\\(|^($classes)::[A-Za-z]+::" || true
}

# Those of the names on standard input that belong to a class.
of_class() {
    local class=$1
    grep -E "(^|for |thunk to )$class(::|\$)" || true
}

# Those of the names on standard input that belong to no exported class.
of_no_exported_class() {
    local classes
    classes=$(IFS='|'; echo "${norvel_exported_classes[*]}")
    grep -vE "(^|for |thunk to )($classes)(::|\$)" || true
}

check_exported_classes() {
    local dll=$1/bin/norvel.dll library=$2 class missing well=0 exports own others
    exports=$(dll_exports "$dll")
    # Inline functions have weak symbols (W, V, u) on Linux and no export on Windows: each program
    # has its own.
    own=$(library_exports "$library" TDBR)
    others=$(library_exports "$library" TDBRWVu)
    for class in "${norvel_exported_classes[@]}"; do
        missing=$(comm -13 <(of_class "$class" <<<"$exports") <(of_class "$class" <<<"$own"))
        if [[ -n $missing ]]; then
            say "norvel.dll lacks of $class:" "$missing"
            well=1
        elif [[ -z $(of_class "$class" <<<"$own") && $class != *CacheData ]]; then
            say "$library has nothing of $class"
            well=1
        fi
    done
    missing=$(comm -23 <(echo "$exports") <(echo "$others"))
    if [[ -n $missing ]]; then
        say "norvel.dll has what $library has not:" "$missing"
        well=1
    fi
    missing=$(of_no_exported_class <<<"$exports")
    if [[ -n $missing ]]; then
        say "norvel.dll exports of no class that is for others:" "$missing"
        well=1
    fi
    say "norvel.dll: $(wc -l <<<"$exports") exports of ${#norvel_exported_classes[@]} classes"
    return $well
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
    cp "$build/package/bin/norvel-embedding.exe" "$folder/bin"
    local printed
    printed=$(QT_QPA_PLATFORM=offscreen "$wine" "$folder/bin/norvel-embedding.exe" "Z:$picture")
    say "$printed"
    [[ ${printed//$'\r'/} == "$expected" ]]
}

# The program of the zip, on files that have nothing to measure: there is no engine.
check_tour() {
    local folder=$1 files=$build/tour-files
    mkdir -p "$files"
    printf 'P3\n2 1\n255\n255 0 0  0 0 255\n' >"$files/picture.ppm"
    printf '\0\0\0\024ftypisom\0\0\002\0isom' >"$files/video.mp4"
    printf 'RIFF\044\0\0\0WAVE' >"$files/sound.wav"
    QT_QPA_PLATFORM=offscreen "$wine" "$folder/bin/norvel-tour.exe" "Z:$files/picture.ppm" \
        "Z:$files/video.mp4" "Z:$files/sound.wav" >&2
}

# run_checks FOLDER LIBRARY: all checks of the unpacked zip beside the library for Linux.
run_checks() {
    local name good=0 bad=0
    for name in exported_classes dlls load_library consumer embedding tour; do
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
