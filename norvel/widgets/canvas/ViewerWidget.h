// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/common/PointerDrag.h>

#include <QBrush>
#include <QCursor>
#include <QRectF>
#include <QWidget>

namespace qrvkp {
class RvKpApplication;
}

namespace norvel {

struct MapGeometry;

/// The part of the canvas that is seen, on the map widget of the canvas, whose child it is:
/// dragging it with the left button pans the canvas and stops at the border of the map.
class ViewerWidget : public QWidget
{
    Q_OBJECT

public:
    /// The application is not owned.
    ViewerWidget(qrvkp::RvKpApplication* application, QWidget* map);
    ~ViewerWidget() override;

    void setStyle(const QBrush& brush, double opacity);
    /// Shown while the pointer is over the viewer.
    void setEnterCursor(const QCursor& cursor);
    /// Has the next layout put the viewer in the middle of the map.
    void recentre() { m_recentre = true; }

    /// Lays the viewer out on a map with that rectangle, and pans the canvas accordingly.
    void layOut(const QRectF& map, const MapGeometry& geometry);
    /// Moves the viewer, kept within the map, and pans the canvas accordingly.
    void moveBy(double dx, double dy);
    /// The viewer's rectangle in the map's coordinates, px, not rounded.
    const QRectF& rectF() const { return m_rect; }

signals:
    /// The viewer was dragged so that its centre is at `point` of the canvas: canvas px, origin at
    /// the bottom left. A slot may destroy the viewer.
    void sigMoved(QPointF point);

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void place(const QRectF& rect, const MapGeometry& geometry);
    QPointF canvasPoint() const;

    qrvkp::RvKpApplication* const m_application;
    QBrush m_brush{QColor(0, 0, 255, 128)};
    double m_opacity = 0.5;
    PointerDrag m_drag;      ///< with any button
    bool m_dragging = false; ///< with the left button: the viewer follows the pointer
    double m_pressX = 0.0;
    double m_pressY = 0.0;
    bool m_recentre = true;
    QRectF m_rect;
    QRectF m_map;
    QCursor m_cursor{Qt::OpenHandCursor};
};

} // namespace norvel
