// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>

#include <string>

/// The files that are rendered, made when they are first asked for: test cards with a tone, 30
/// pictures a second, H.264 with a key frame every 250 pictures. Ends the program with 2 if one
/// cannot be made. One thread only.
namespace BenchMedia {

constexpr int picturesPerSecond = 30;
constexpr int picturesPerKeyFrame = 250;

/// A video of that size, 10 seconds long.
std::string video(QSize size);
/// A video of that size with three key frames, 25 seconds long.
std::string videoForSeeks(QSize size);
/// A video of 10 minutes, 640 x 360. Its content repeats after 50 seconds.
std::string longVideo();
/// One of any number of files with the same two seconds, 720p.
std::string copy(int index);
/// A picture of a white disc on black, 640 x 360.
std::string circle();
/// Where all of them are.
std::string folder();

} // namespace BenchMedia
