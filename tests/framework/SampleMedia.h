// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

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

} // namespace SampleMedia
