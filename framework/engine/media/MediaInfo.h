// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace rvengine {

/// What a file is asked to be.
enum class MediaKind {
    Video,   ///< moving pictures, with or without sound
    Picture, ///< a still picture
    Sound,   ///< anything with sound, a video too
};

/// Files with more streams are refused.
constexpr int MostStreams = 128;

/// What a probe tells of a file.
struct MediaInfo
{
    /// Width in pixels as it is to be seen: turned as the file says, with square pixels. 0 for
    /// sound.
    int width = 0;
    /// Height in pixels as it is to be seen, like the width. 0 for sound.
    int height = 0;
    /// Length of the whole file in milliseconds, 0 for a picture.
    long long durationMs = 0;
    /// Pictures a second of a video, 0 when the file does not tell and for everything else.
    double frameRate = 0.0;
};

} // namespace rvengine
