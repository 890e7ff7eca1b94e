// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace qrvkp {

/// Where the canvas is in its view, whatever the size of the view.
struct CanvasPlacement
{
    QSizeF canvasSize;  ///< canvas px
    double scale = 1.0; ///< 1 = the whole canvas fits into the view; positive and finite
    QPointF position;   ///< view px by which the canvas is moved off the centre, y up; finite
};

/// The arithmetic between a canvas (px, origin at the bottom left, y up) and its view (px, origin
/// at the top left, y down).
///
/// A canvas or a view without an area shows nothing: every canvas point is then in one place of the
/// view, and every view point at the centre of the canvas. A canvas whose size is not positive and
/// finite counts as 0 x 0. A point whose image is not finite comes back unchanged.
class RVKPCORE_EXPORT CanvasSpace
{
public:
    /// `viewSize` in px.
    CanvasSpace(const CanvasPlacement& placement, const QSizeF& viewSize);

    /// View px of the canvas at scale 1: fitted into the view with its own proportions.
    QSizeF showSize() const;
    /// The canvas at its scale and position, in view px.
    QRectF canvasRect() const;
    /// The canvas in whole device pixels of a view with `pixelRatio` device pixels per px: at most
    /// one device pixel off, and of a size that does not depend on the position. Empty when the
    /// canvas or the view is.
    QRectF canvasPixels(double pixelRatio) const;
    QSizeF viewSize() const { return m_viewSize; }

    QPointF toView(const QPointF& canvasPoint) const;
    QPointF toCanvas(const QPointF& viewPoint) const;

    /// The position with which another scale leaves the canvas where it is at `viewPoint`.
    QPointF positionAtScale(double scale, const QPointF& viewPoint) const;

private:
    /// View px per canvas px.
    double zoom() const { return m_fit * m_placement.scale; }

    CanvasPlacement m_placement;
    QSizeF m_viewSize;
    double m_fit = 0.0; ///< view px per canvas px at scale 1
};

} // namespace qrvkp
