// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QBrush>
#include <QObject>
#include <QPen>
#include <QPoint>

namespace qrvkp {
class RvKpApplication;
}

namespace norvel {

class CanvasMapItem;

/// A small map of the canvas, drawn in the framework's own graphics scene: a rectangle that stands
/// for the whole canvas and, on it, one for the part that the view shows. Dragging the inner one
/// pans the canvas.
///
/// The gestures of the application's view are off while the inner one is held with any mouse
/// button. They are switched on when the button is released, and also when the drag ends without
/// that: the map is hidden, disabled or destroyed, a modal window opens, or something else gets the
/// mouse. They are switched on even if the host had switched them off before the press, because the
/// framework does not report whether they are on. Without a drag the map leaves them alone.
///
/// The view of the application must exist before, and the application must outlive the object.
class NORVEL_EXPORT CanvasViewer : public QObject
{
    Q_OBJECT

public:
    /// Adds the map to the scene of the application's graphics view. From then on every change of
    /// the scene's rectangle lays the map out anew. The application is not owned.
    explicit CanvasViewer(qrvkp::RvKpApplication* application);
    /// Takes the map out of the scene.
    ~CanvasViewer() override;

    /// The length of the map's longer side, scene px; 96 at first. Takes effect at `update`.
    void setCanvasItemMaxSideLength(int length);
    /// The top left corner of the map, scene px; (0, 0) at first. Takes effect at `update`.
    void setPos(QPoint position);

    /// How the map is drawn. Does nothing when the scene, and the map with it, is gone.
    void setCanvasItemStyle(const QBrush& brush, const QPen& pen);
    /// How the viewer is drawn. Does nothing when the scene, and the map with it, is gone.
    void setViewerItemStyle(const QBrush& brush, const QPen& pen);

    void show();
    /// Hides the map, which ends a drag; the next layout puts the viewer in its middle.
    void hide();
    /// Has the next `update` put the viewer in the middle of the map.
    void setCenter();
    /// Lays the map out by the sizes of canvas and view and by the zoom, and pans the canvas to
    /// where the viewer then is.
    void update();

private:
    qrvkp::RvKpApplication* const m_application;
    CanvasMapItem* m_mapItem; ///< null when the scene, which holds it too, has destroyed it
    int m_maxSideLength = 96;
    QPoint m_position;
};

} // namespace norvel
