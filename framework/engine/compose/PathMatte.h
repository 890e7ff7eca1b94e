// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>

#include <QImage>
#include <QRect>

namespace rvengine {

/// The mask that a matte shape makes at one output scale. It is drawn and feathered once; putting
/// it elsewhere costs no more than a multiplication.
///
/// The edge of the shape goes from full to nothing over the feather's radius to either side. The
/// feather takes what stands at the border of the box to go on beyond it, so that a shape that
/// touches the border of its box is cut there by the box alone, or not at all.
///
/// Never changed once it was made: any thread may use it.
class PathMatte
{
public:
    /// Draws the mask of `shape` for an output with that many px for each canvas px. Sides beyond
    /// 4096 output px are sampled coarser. Nothing is seen through a matte whose box is not finite,
    /// or less than a millionth of an output px wide or high, or through one that is scaled by no
    /// number above 0. A feather that is no number is 0.
    PathMatte(const MatteShape& shape, double pixelsPerCanvasPx);

    /// Multiplies the picture by the mask. `center` is where the middle of the box stands, in px of
    /// the picture, origin at the top left, y down; one that is not finite hides everything.
    /// Pictures of other formats become ARGB32_Premultiplied.
    void apply(QImage& picture, QPointF center) const;

    /// The same for the part of the picture within `area` alone.
    void apply(QImage& picture, QPointF center, QRect area) const;

private:
    QImage m_mask;               ///< Alpha8, null when nothing is seen
    QSizeF m_box;                ///< output px
    double m_columnsPerPx = 1.0; ///< of the mask, for each output px
    double m_rowsPerPx = 1.0;    ///< of the mask, for each output px
    bool m_limitedToBox = true;
};

} // namespace rvengine
