# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash

# What stands in the zip, and what programs for Windows need around them. Sourced by build.sh.

# The Qt modules that norvel and its consumers are built with.
norvel_qt_modules=(Core Gui Widgets)

# deploy_runtime QT FFMPEG FOLDER: what programs need to run below FOLDER: the DLLs and plugins of
# Qt, the DLLs of FFmpeg and of the compiler, and fonts for the offscreen platform, which asks
# Windows for none.
deploy_runtime() {
    local qt=$1 ffmpeg=$2 folder=$3
    local compiler=/usr/lib/gcc/x86_64-w64-mingw32/12-posix
    mkdir -p "$folder/bin" "$folder/lib/fonts"
    cp -u "$qt"/bin/*.dll "$ffmpeg"/bin/*.dll "$compiler"/libstdc++-6.dll "$compiler"/libgcc_s_seh-1.dll \
        /usr/x86_64-w64-mingw32/lib/libwinpthread-1.dll "$folder/bin"
    cp -ru "$qt/plugins" "$folder"
    # By this file Qt knows that the folder above its DLLs is its own, where its plugins are.
    cp -u "$qt/lib/libQt5Core.a" "$folder/lib"
    cp -u /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf \
        /usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc "$folder/lib/fonts"
}

# deploy_qt_development QT FOLDER: headers, import libraries and CMake packages of Qt, so that
# programs are built against FOLDER alone. The four tools are those of the machine that built Qt:
# Qt's CMake packages want them beside the DLLs.
deploy_qt_development() {
    local qt=$1 folder=$2 module
    mkdir -p "$folder/include" "$folder/lib/cmake" "$folder/mkspecs"
    cp "$qt"/bin/{moc,qmake,rcc,uic} "$folder/bin"
    cp -r "$qt/mkspecs/win32-g++" "$folder/mkspecs"
    cp -r "$qt/lib/cmake/Qt5" "$folder/lib/cmake"
    for module in "${norvel_qt_modules[@]}"; do
        cp -r "$qt/include/Qt$module" "$folder/include"
        cp -r "$qt/lib/cmake/Qt5$module" "$folder/lib/cmake"
        cp "$qt/lib/libQt5$module.a" "$folder/lib"
    done
    cp "$qt/lib/libqtmain.a" "$folder/lib"
}

# make_package QT FFMPEG BUILD FOLDER: all of the zip below FOLDER, with what BUILD installs.
make_package() {
    local qt=$1 ffmpeg=$2 build=$3 folder=$4
    rm -rf "$folder"
    cmake --install "$build" --prefix "$folder" --strip
    deploy_runtime "$qt" "$ffmpeg" "$folder"
    deploy_qt_development "$qt" "$folder"
    mkdir -p "$folder/licenses/ffmpeg"
    cp "$ffmpeg"/{COPYING.LGPLv2.1,LICENSE.md} "$folder/licenses/ffmpeg"
    cp LICENSE "$folder"
}
