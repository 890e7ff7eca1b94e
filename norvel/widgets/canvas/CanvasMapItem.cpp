// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/CanvasMapItem.h>

#include <norvel/widgets/canvas/MapGeometry.h>
#include <norvel/widgets/canvas/ViewerItem.h>

#include <QBrush>
#include <QColor>
#include <QGraphicsScene>
#include <QPen>

#include <utility>

namespace norvel {

CanvasMapItem::CanvasMapItem(qrvkp::RvKpApplication* application, std::function<void()> gone)
    : m_viewerItem(new ViewerItem(application, this))
    , m_application(application)
    , m_scene(sceneOf(application))
    , m_gone(std::move(gone))
{
    setZValue(10000.0);
    setPen(
        QPen(QBrush(QColor(128, 128, 128, 255)), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    setBrush(QColor(128, 128, 128, 128));
    // The viewer comes along as a child of the map.
    if (m_scene)
        m_scene->addItem(this);
}

CanvasMapItem::~CanvasMapItem()
{
    if (QGraphicsScene* current = scene()) {
        current->removeItem(this);
        if (m_viewerItem->scene())
            m_viewerItem->scene()->removeItem(m_viewerItem);
    }
    delete m_viewerItem;
    m_gone();
}

void CanvasMapItem::layOut(const QPointF& position, int maxSideLength)
{
    const MapGeometry geometry = MapGeometry::of(m_application);
    const QRectF map(position, geometry.mapSize(maxSideLength));
    setRect(map);
    m_viewerItem->setRect(MapGeometry::viewerRect(map, geometry.viewerSize(map.size()),
                                                  m_viewerItem->rect(),
                                                  std::exchange(m_recentre, false)));
    norvel::pushCanvasPosition(m_application, geometry, rect(), m_viewerItem->rect());
}

void CanvasMapItem::pushCanvasPosition()
{
    norvel::pushCanvasPosition(m_application, MapGeometry::of(m_application), rect(),
                               m_viewerItem->rect());
}

} // namespace norvel
