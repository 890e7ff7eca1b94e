// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/ViewerItem.h>

#include <norvel/widgets/canvas/CanvasMapItem.h>
#include <norvel/widgets/canvas/MapGeometry.h>

#include <QBrush>
#include <QColor>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QPen>

namespace norvel {

ViewerItem::ViewerItem(qrvkp::RvKpApplication* application, CanvasMapItem* map)
    : QGraphicsRectItem(map)
    , m_drag(application, [this] { giveMouseBack(); })
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
    m_drag.press(event->widget());
    m_pressScenePos = event->scenePos();
}

void ViewerItem::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (!m_drag.isInProgress())
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
    m_drag.release();
}

bool ViewerItem::sceneEvent(QEvent* event)
{
    if (event->type() == QEvent::UngrabMouse)
        m_drag.interrupt();
    return QGraphicsRectItem::sceneEvent(event);
}

QVariant ViewerItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    // A scene tells a new item that it is visible when it first gets round to it.
    const bool isGone = (change == ItemVisibleHasChanged && !isVisible()) ||
                        (change == ItemEnabledHasChanged && !isEnabled()) ||
                        change == ItemSceneHasChanged;
    if (isGone)
        m_drag.interrupt();
    return QGraphicsRectItem::itemChange(change, value);
}

void ViewerItem::giveMouseBack()
{
    // The scene sends the item every press until it has seen the release.
    if (scene() && scene()->mouseGrabberItem() == this)
        ungrabMouse();
}

} // namespace norvel
