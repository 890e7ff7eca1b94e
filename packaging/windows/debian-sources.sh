# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash

# Source packages of Debian. Sourced by build-qt.sh and build-ffmpeg.sh.

# fetch_sources FOLDER PACKAGE...: unpacks the source packages in FOLDER. They come from the archives
# that the machine has packages from, which are asked for sources by this program alone.
fetch_sources() {
    local folder=$1 file
    shift
    mkdir -p "$folder/archives" "$folder/lists/partial"
    for file in /etc/apt/sources.list{,.d/*}; do
        [[ -f $file ]] || continue
        case $file in
        *.list) sed -n 's/^deb /deb-src /p' "$file" >"$folder/archives/${file##*/}" ;;
        *.sources) sed 's/^Types: .*/Types: deb-src/' "$file" >"$folder/archives/${file##*/}" ;;
        esac
    done
    local options=(-qq -o Dir::Etc::SourceList=/dev/null
        -o "Dir::Etc::SourceParts=$folder/archives" -o "Dir::State::Lists=$folder/lists"
        -o APT::Sandbox::User=root)
    # A foreign archive that does not answer is no reason to stop: the next step tells.
    apt-get "${options[@]}" update || true
    (cd "$folder" && apt-get "${options[@]}" source "$@")
}
