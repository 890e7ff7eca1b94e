// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/PixelPool.h>

#include "Ffmpeg.h"

#include <QImage>
#include <QSize>

#include <array>
#include <cstddef>

namespace rvengine {

/// Turns pictures of FFmpeg into those of Qt and back. Used by one thread at a time.
class PictureConverter
{
public:
    /// The picture with square pixels, scaled to `size` px, in the colours and the range that the
    /// frame tells: BT.709 from 720 lines on and BT.601 below where it tells none. Format_RGB32, or
    /// Format_ARGB32_Premultiplied where the frame has transparency; null when FFmpeg cannot
    /// convert it.
    QImage toImage(const AVFrame& frame, QSize size);

    /// Writes the picture, Format_RGB32, into the frame, which has its buffers, its size and a
    /// format; in BT.709 of limited range. False when FFmpeg cannot convert it.
    bool toFrame(const QImage& picture, AVFrame& frame);

private:
    /// For what a scaler is set up.
    using Setup = std::array<int, 9>;

    bool setUp(const Setup& setup, int flags);

    PixelPool m_pictures;
    ScalerPointer m_scaler;
    Setup m_setup{};
};

} // namespace rvengine
