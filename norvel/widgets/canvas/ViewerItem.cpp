// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/ViewerItem.h>

#include <norvel/widgets/canvas/CanvasMapItem.h>
#include <norvel/widgets/canvas/MapGeometry.h>

#include <QBrush>
#include <QColor>
#include <QGraphicsSceneMouseEvent>
#include <QPen>

namespace norvel {

ViewerItem::ViewerItem(qrvkp::RvKpApplication* application, CanvasMapItem* map)
    : QGraphicsRectItem(map)
    , m_application(application)
    , m_mapItem(map)
{
    setZValue(10001.0);
    setPen(QPen(QBrush(QColor(0, 0, 128, 255)), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    setBrush(QColor(0, 0, 128, 160));
    setFlags(QGraphicsItem::ItemIsMovable);
}

ViewerItem::~ViewerItem() = default;

void ViewerItem::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    enableGesture(m_application, false);
    m_pressed = true;
    m_pressScenePos = event->scenePos();
}

void ViewerItem::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (!m_pressed)
        return;
    const QPointF delta = event->scenePos() - event->lastScenePos();
    const QRectF candidate = rect().translated(delta);
    if (!m_mapItem->rect().contains(candidate))
        return;
    setRect(candidate);
    m_mapItem->pushCanvasPosition();
}

void ViewerItem::mouseReleaseEvent(QGraphicsSceneMouseEvent*)
{
    m_pressed = false;
    enableGesture(m_application, true);
}

} // namespace norvel
