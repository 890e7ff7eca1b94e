// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointF>

namespace qrvkp {

struct NativeMediaTrack;

/// The arithmetic between the canvas (px, origin at the bottom left, y up) and the content of a
/// media track as it is now (px of the content, origin at its bottom left, y up).
///
/// At scale 0 every point of the track is at its position, and every canvas point at the centre of
/// the content. A point whose image is not finite comes back unchanged.
class TrackSpace
{
public:
    explicit TrackSpace(const NativeMediaTrack& track);

    QPointF toCanvas(const QPointF& trackPoint) const;
    QPointF toTrack(const QPointF& canvasPoint) const;
    /// `fraction` of the content: (0, 0) is its top left, (1, 1) its bottom right.
    QPointF fractionToCanvas(const QPointF& fraction) const;

private:
    QPointF placed(const QPointF& trackPoint) const;

    double m_width;
    double m_height;
    QPointF m_centre; ///< on the canvas
    double m_scale;
    double m_cosine; ///< of the rotation clockwise
    double m_sine;
};

} // namespace qrvkp
