// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRectF>
#include <QSizeF>

class QGraphicsScene;

namespace qrvkp {
class RvKpApplication;
}

namespace norvel {

/// What the map of a canvas is laid out by: sizes of the canvas, of the view that shows it and of
/// its zoom, read from the framework at one moment. All arithmetic is in single precision.
struct MapGeometry
{
    float canvasWidth = 0.0F;  ///< canvas px
    float canvasHeight = 0.0F; ///< canvas px
    float viewWidth = 0.0F;    ///< px of the graphics view; 0 when there is none
    float viewHeight = 0.0F;   ///< px of the graphics view; 0 when there is none
    float scale = 1.0F;        ///< zoom of the canvas, 1 shows the whole canvas
    float shownWidth = 0.0F;   ///< px of the view that the canvas is wide at scale 1

    /// All sizes are 0 without an application.
    static MapGeometry of(qrvkp::RvKpApplication* application);

    /// The size of a map whose longer side is `maxSideLength`; empty for a canvas without an area.
    QSizeF mapSize(int maxSideLength) const;
    /// The size of the viewer on a map of that size: the part of the canvas that the view shows.
    QSizeF viewerSize(const QSizeF& map) const;
    /// View px for each px of the map; 0 for a map without a width.
    float viewPixelsPerMapPixel(const QRectF& map) const;

    /// Where the viewer is laid out on the map: in its middle when `recentre`, else around the
    /// centre of `current`, kept within the map in whole px.
    static QRectF viewerRect(const QRectF& map, const QSizeF& viewer, const QRectF& current,
                             bool recentre);
};

/// A coordinate or a length as a whole number that a widget can bear, cut off towards 0; 0 for what
/// is no number.
int wholePixels(double value);

/// The scene of the application's view; null without a view or an application.
QGraphicsScene* sceneOf(qrvkp::RvKpApplication* application);

/// Pans the canvas so that the view shows what the viewer covers on the map.
void pushCanvasPosition(qrvkp::RvKpApplication* application, const MapGeometry& geometry,
                        const QRectF& map, const QRectF& viewer);

} // namespace norvel
