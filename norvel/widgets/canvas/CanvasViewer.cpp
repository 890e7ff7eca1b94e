// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/CanvasViewer.h>

#include <norvel/widgets/canvas/CanvasMapItem.h>
#include <norvel/widgets/canvas/MapGeometry.h>
#include <norvel/widgets/canvas/ViewerItem.h>

#include <QGraphicsScene>

namespace norvel {

CanvasViewer::CanvasViewer(qrvkp::RvKpApplication* application)
    : m_application(application)
    , m_mapItem(new CanvasMapItem(application, [this] { m_mapItem = nullptr; }))
{
    if (const QGraphicsScene* scene = sceneOf(m_application))
        connect(scene, &QGraphicsScene::sceneRectChanged, this, [this] { update(); });
}

CanvasViewer::~CanvasViewer()
{
    delete m_mapItem;
}

void CanvasViewer::setCanvasItemMaxSideLength(int length)
{
    m_maxSideLength = length;
}

void CanvasViewer::setPos(QPoint position)
{
    m_position = position;
}

void CanvasViewer::setCanvasItemStyle(const QBrush& brush, const QPen& pen)
{
    if (!m_mapItem)
        return;
    m_mapItem->setBrush(brush);
    m_mapItem->setPen(pen);
}

void CanvasViewer::setViewerItemStyle(const QBrush& brush, const QPen& pen)
{
    if (!m_mapItem)
        return;
    m_mapItem->viewerItem()->setBrush(brush);
    m_mapItem->viewerItem()->setPen(pen);
}

void CanvasViewer::show()
{
    if (m_mapItem)
        m_mapItem->setVisible(true);
}

void CanvasViewer::hide()
{
    if (!m_mapItem)
        return;
    m_mapItem->setVisible(false);
    m_mapItem->recentre();
}

void CanvasViewer::setCenter()
{
    if (m_mapItem)
        m_mapItem->recentre();
}

void CanvasViewer::update()
{
    if (m_mapItem)
        m_mapItem->layOut(m_position, m_maxSideLength);
}

} // namespace norvel
