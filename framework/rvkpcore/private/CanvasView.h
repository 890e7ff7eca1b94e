// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/private/CanvasSpace.h>
#include <rvkpcore/rvkpcore_export.h>

#include <QGraphicsView>
#include <QImage>
#include <QPointer>

namespace qrvkp {

class CanvasItem;

/// Shows the canvas with its current picture, and lets the user zoom and move it.
///
/// The rectangle of its scene is that of its viewport, so that scene coordinates are px of the
/// viewport; hosts put items of their own into the scene. When the rectangle changes, the
/// conversions go by the new one already. A hidden view gives the new size to viewport and scene
/// when it is shown; the conversions go by it at once.
///
/// Gestures: the wheel zooms about the cursor, dragging with the left or the middle button moves
/// the canvas. The items of the scene come first: what one of them takes is no gesture.
class RVKPCORE_EXPORT CanvasView : public QGraphicsView
{
    Q_OBJECT

public:
    /// `placement` is read and, by gestures, changed as long as the view lives.
    explicit CanvasView(CanvasPlacement& placement);
    ~CanvasView() override;

    /// The space of the canvas in the viewport: as they are now, or will be when the view is shown.
    CanvasSpace space() const;
    /// To be called when the placement was changed.
    void layOut();

    /// Draws the picture stretched onto the canvas, smooth unless it has the size in device pixels
    /// that the canvas covers; the picture's own device pixel ratio means nothing here. A null
    /// picture leaves the canvas black.
    void setPicture(const QImage& picture);
    /// The most pixels of which a picture can show something: the device pixels that the canvas
    /// covers, at least 1 x 1, and no more than the canvas itself has.
    QSize wantedPictureSize() const;

    /// On at first. Switching them off ends a drag.
    void setGesturesEnabled(bool enabled);

signals:
    void wantedPictureSizeChanged();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void makeItem();
    void beginDrag(QMouseEvent& event);

    CanvasPlacement& m_placement;
    QGraphicsScene* const m_scene; ///< belongs to the view
    QPointer<CanvasItem> m_item;   ///< belongs to the scene, which a host may clear
    QImage m_picture;
    QSize m_announcedSize; ///< the wanted picture size that was signalled last
    bool m_gesturesEnabled = true;
    Qt::MouseButton m_dragButton = Qt::NoButton; ///< of the drag in progress
    QPointF m_dragPoint;                         ///< viewport px where the drag has come to
};

} // namespace qrvkp
