// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/ViewerWidget.h>

#include <norvel/widgets/canvas/BoxPainter.h>
#include <norvel/widgets/canvas/MapGeometry.h>

#include <QMouseEvent>

#include <algorithm>
#include <utility>

namespace norvel {

namespace {

/// A start of a stretch that lies within 0 to `room`; a stretch that is longer begins before 0.
double keptWithin(double start, double length, double room)
{
    const double kept = std::max(0.0, start);
    return kept + length > room ? room - length : kept;
}

} // namespace

ViewerWidget::ViewerWidget(qrvkp::RvKpApplication* application, QWidget* map)
    : QWidget(map)
    , m_application(application)
    , m_drag(application, [this] { m_dragging = false; })
{
}

ViewerWidget::~ViewerWidget() = default;

void ViewerWidget::setStyle(const QBrush& brush, double opacity)
{
    m_brush = brush;
    m_opacity = opacity;
    update();
}

void ViewerWidget::setEnterCursor(const QCursor& cursor)
{
    m_cursor = cursor;
}

void ViewerWidget::layOut(const QRectF& map, const MapGeometry& geometry)
{
    m_map = map;
    place(MapGeometry::viewerRect(map, geometry.viewerSize(map.size()), m_rect,
                                  std::exchange(m_recentre, false)),
          geometry);
    update();
}

void ViewerWidget::moveBy(double dx, double dy)
{
    place(QRectF(QPointF(keptWithin(m_rect.x() + dx, m_rect.width(), m_map.width()),
                         keptWithin(m_rect.y() + dy, m_rect.height(), m_map.height())),
                 m_rect.size()),
          MapGeometry::of(m_application));
}

void ViewerWidget::place(const QRectF& rect, const MapGeometry& geometry)
{
    m_rect = rect;
    move(wholePixels(rect.x()), wholePixels(rect.y()));
    setFixedSize(wholePixels(rect.width()), wholePixels(rect.height()));
    pushCanvasPosition(m_application, geometry, m_map, m_rect);
}

QPointF ViewerWidget::canvasPoint() const
{
    const auto mapWidth = static_cast<float>(m_map.width());
    const float ratio =
        mapWidth > 0.0F ? MapGeometry::of(m_application).canvasWidth / mapWidth : 0.0F;
    const auto x = static_cast<float>(m_rect.center().x());
    const auto y = static_cast<float>(m_map.height() - m_rect.center().y());
    return {static_cast<double>(x * ratio), static_cast<double>(y * ratio)};
}

void ViewerWidget::enterEvent(QEvent*)
{
    setCursor(m_cursor);
}

void ViewerWidget::leaveEvent(QEvent*)
{
    unsetCursor();
}

void ViewerWidget::mousePressEvent(QMouseEvent* event)
{
    m_drag.press(this);
    if (event->button() != Qt::LeftButton)
        return;
    m_dragging = true;
    m_pressX = event->localPos().x();
    m_pressY = event->localPos().y();
}

void ViewerWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging)
        return;
    moveBy(event->localPos().x() - m_pressX, event->localPos().y() - m_pressY);
    emit sigMoved(canvasPoint());
}

void ViewerWidget::mouseReleaseEvent(QMouseEvent*)
{
    m_drag.release();
    m_dragging = false;
}

void ViewerWidget::paintEvent(QPaintEvent*)
{
    paintBox(*this, m_brush, m_opacity);
}

} // namespace norvel
