#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Renders the SVG pictures below this folder to PNG beside them: NAME.png as large as the SVG says,
# NAME@2x.png for two device pixels per px. To be run after a change of an SVG, by hand: the PNGs are
# kept in the tree. Needs rsvg-convert (Debian: librsvg2-bin).

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

for svg in */*.svg; do
    rsvg-convert --zoom 1 --output "${svg%.svg}.png" "$svg"
    rsvg-convert --zoom 2 --output "${svg%.svg}@2x.png" "$svg"
done
