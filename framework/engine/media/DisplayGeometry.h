// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "MediaFile.h"

#include <QSize>
#include <QTransform>

namespace rvengine {

/// How the pictures of a video are to be seen: with square pixels, turned as its file says.
struct DisplayGeometry
{
    QSize squared;   ///< px, with square pixels, before it is turned
    QTransform turn; ///< quarter turns and reflections

    /// The size as it is seen, px.
    QSize size() const { return turned(squared); }
    /// What a size becomes when it is turned; also what one was that becomes this one.
    QSize turned(QSize other) const { return turn.m11() == 0.0 ? other.transposed() : other; }
    bool isUpright() const { return turn.isIdentity(); }
};

/// That of the file's video, which it must have.
DisplayGeometry displayGeometryOf(const MediaFile& file);

} // namespace rvengine
