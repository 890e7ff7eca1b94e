// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QBrush>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QWidget>

namespace qrvkp {
class RvKpApplication;
}

namespace norvel {

class ViewerWidget;

/// A small map of the canvas as a widget: it stands for the whole canvas and holds a widget for the
/// part that the framework's view shows. Dragging the inner one pans the canvas.
///
/// The gestures of the application's view are off while the inner one is held with any mouse
/// button. They are switched on when a button is released, and also when the drag ends without
/// that: the map is hidden, disabled or destroyed, a modal window opens, or something else gets the
/// mouse. They are switched on even if the host had switched them off before the press, because the
/// framework does not report whether they are on. Without a drag the map leaves them alone.
///
/// `show`, `hide` and `update` are those of this class: they lay out, which those of `QWidget` do
/// not. The application must outlive the widget.
class NORVEL_EXPORT CanvasViewerWidget : public QWidget
{
    Q_OBJECT

public:
    /// If the application has a graphics view, every change of its scene's rectangle lays the map
    /// out anew. The application is not owned.
    CanvasViewerWidget(qrvkp::RvKpApplication* application, QWidget* parent);
    ~CanvasViewerWidget() override;

    /// How the map is filled; white, half transparent at first.
    void setCanvasWidgetStyle(const QBrush& brush, const double& opacity);
    /// How the viewer is filled; blue, half transparent at first.
    void setViewerWidgetStyle(const QBrush& brush, const double& opacity);
    /// The cursor over the viewer; an open hand at first.
    void setEnterCursor(const QCursor& cursor);
    /// The length of the map's longer side, px; 96 at first. Takes effect at `update`.
    void setMaxSideLength(int length);

    /// The rectangle of the map in its own coordinates, px, not rounded.
    const QRectF& rectF() const { return m_rect; }

    void show();
    /// Hides the map, which ends a drag; it is shown again with the viewer in its middle.
    void hide();
    /// Puts the viewer in the middle of the map.
    void setCenter();
    /// Zooms the canvas to `scale` and shows that point of it, given in fractions of the canvas,
    /// in the middle of the view, as far as the map allows.
    void setCenter(QPointF point, float scale);
    /// Lays the map out by the sizes of canvas and view and by the zoom, pans the canvas to where
    /// the viewer then is, and repaints. An unzoomed canvas has the viewer in its middle.
    void update();

signals:
    /// The viewer was dragged so that its centre is at `point` of the canvas: canvas px, origin at
    /// the bottom left. A slot may hide or destroy the map or open a modal window; that ends the
    /// drag.
    void sigMoved(QPointF point);

protected:
    /// The map ignores the pointer: only the viewer is dragged.
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    qrvkp::RvKpApplication* const m_application;
    QPointer<ViewerWidget> m_viewerWidget; ///< a child
    QBrush m_brush{QColor(255, 255, 255, 128)};
    double m_opacity = 0.5;
    int m_maxSideLength = 96;
    QRectF m_rect;
};

} // namespace norvel
