// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>

#include <cstdint>

namespace rvengine {

// How FFmpeg reads a file of Qt's: with FFmpeg's parameters and results.

/// Reads at most `size` bytes; how many there were, or an error number, also for the end.
int readFrom(QFile& file, std::uint8_t* to, int size);

/// Goes to a place that `whence` tells the origin of, or tells the size; the place, or an error
/// number.
std::int64_t seekIn(QFile& file, std::int64_t offset, int whence);

} // namespace rvengine
