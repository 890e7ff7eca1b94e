// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRgb>

#include <string>

/// Media files that many tests share: made when they are first asked for, in a folder that goes
/// with the program.
namespace SampleMedia {

constexpr int VideoWidth = 64;
constexpr int VideoHeight = 48;
constexpr int PictureWidth = 40;
constexpr int PictureHeight = 30;

/// A second of moving pictures with sound.
std::string video();
/// A still picture.
std::string picture();
/// A second of sound.
std::string sound();

/// A video of 25 pictures a second without sound, whose pictures carry their numbers, from 0 on:
/// 16 upright bars of equal width stand for the bits, the lowest on the left, white for a one. Only
/// the first picture can be decoded without others.
constexpr int NumberedWidth = 320;
constexpr int NumberedHeight = 180;
constexpr int NumberedPictures = 75;
constexpr int NumberedBits = 16;
constexpr long long NumberedInterval = 40; ///< ms
std::string numberedVideo();

/// A picture of one colour, of 64 x 36 px.
std::string colour(QRgb rgb);

/// A colour look-up table that inverts.
std::string colourTable();

} // namespace SampleMedia
