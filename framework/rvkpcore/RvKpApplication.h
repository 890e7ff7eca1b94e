// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvKpConfig.h>
#include <rvkpcore/RvKpPlayer.h>
#include <rvkpcore/rvkpcore_export.h>

#include <QPointF>
#include <QSizeF>

#include <memory>

class QGraphicsView;

namespace qrvkp {

class CanvasView;
class RvITrack;

/// The framework in a host's process: a host makes one after its `QApplication`. A
/// `QCoreApplication`, or none, is enough for everything that is neither seen nor played.
///
/// Several of them work side by side: each has a player, a canvas size and a view of its own, and
/// may be destroyed while the others play.
///
/// Points on the canvas are px with the origin at the bottom left, y up. Points in the view are px
/// of the viewport of the graphics view, y down. Points of a media track are px of its content with
/// the origin at the bottom left of it, y up, before the track is scaled, rotated and placed.
class RVKPCORE_EXPORT RvKpApplication
{
public:
    RvKpApplication();
    ~RvKpApplication();
    RvKpApplication(const RvKpApplication&) = delete;
    RvKpApplication& operator=(const RvKpApplication&) = delete;

    /// The player; belongs to the application.
    RvKpPlayer* getPlayer();
    /// The configuration; belongs to the application.
    RvKpConfig* getRvKpConfig();

    /// The view that shows the canvas, made at the first call; null without a `QApplication`.
    ///
    /// It belongs to the application, also when a host puts it into a layout. When it was destroyed
    /// with its parent, the next call makes a new one, which shows the canvas in the same place. An
    /// application that has a view is destroyed before the `QApplication`, as all widgets are.
    ///
    /// The rectangle of its scene is that of its viewport: a host can put items of its own into the
    /// scene, in px of the viewport, and lays them out anew at `QGraphicsScene::sceneRectChanged`.
    /// A hidden view gives a new size to viewport and scene when it is shown; the conversions and
    /// `getCanvasShowDimension` go by it at once.
    QGraphicsView* getGraphicsView();

    /// Switches the view's own gestures, which are on at first: the wheel zooms about the cursor,
    /// dragging with the left or the middle button moves the canvas. What an item of the scene
    /// takes is no gesture. Switching them off ends a drag.
    void enableGesture(bool enable);

    /// The zoom of the canvas in the view: at 1 the whole canvas fits.
    float getCanvasScale() const;
    /// Does nothing when the scale is not positive and finite.
    void setCanvasScale(float scale);

    /// How far the centre of the canvas is from that of the view: view px, y up.
    QPointF getCanvasPosition() const;
    /// Does nothing when a coordinate is not finite.
    void setCanvasPosition(float x, float y);

    /// The size of the canvas in the view at scale 1, in view px: the canvas fitted into the
    /// viewport with its own proportions. While there is no view, the canvas size; 0 x 0 for a
    /// canvas whose size is not positive and finite.
    QSizeF getCanvasShowDimension() const;

    // Conversions. While there is no view, it is taken to be as large as the canvas. A canvas or a
    // view without an area, or a track of scale 0, is a single point: what is converted from it
    // gives the centre. A point whose image is not finite comes back unchanged.

    QPointF convertViewToCanvas(const QPointF& viewPoint) const;
    QPointF convertCanvasToView(const QPointF& canvasPoint) const;
    /// Gives the point unchanged when the track is null or shows no picture.
    QPointF convertCanvasToTrack(RvITrack* track, const QPointF& canvasPoint) const;
    /// Gives the point unchanged when the track is null or shows no picture.
    QPointF convertTrackToCanvas(RvITrack* track, const QPointF& trackPoint) const;
    /// `fraction` of the track's content: (0, 0) is its top left, (1, 1) its bottom right. Gives it
    /// unchanged when the track is null or shows no picture.
    QPointF convertTrackOriginContentToCanvas(RvITrack* track, const QPointF& fraction) const;

private:
    struct Canvas;

    void showPictures(CanvasView& view);

    RvKpConfig m_config;
    RvKpPlayer m_player;
    std::unique_ptr<Canvas> m_canvas;
};

} // namespace qrvkp
