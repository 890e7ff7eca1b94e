// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

/// What somebody sees who drags the playhead to and fro through a film of ten minutes, 60 places a
/// second, and then lets it go.
struct ScrubResult
{
    double longestGap = 0.0; ///< between two pictures while it is dragged, seconds
    double settled = 0.0;    ///< from the last seek to the right picture, seconds
    double bareSeek = 0.0;   ///< what a bare exact seek to that place takes, seconds
    int seeks = 0;
    int pictures = 0;    ///< while it is dragged
    std::string problem; ///< empty if all went well
};

/// Scrubs through `BenchMedia::longVideo` for some seconds, and lets go at a place of its own for
/// each `round`.
ScrubResult scrub(int round);
