// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/common/PointerDrag.h>

#include <QGraphicsRectItem>
#include <QPointF>

namespace qrvkp {
class RvKpApplication;
}

namespace norvel {

class CanvasMapItem;

/// The part of the canvas that is seen, on the map of the canvas: dragging it pans the canvas. A
/// child item of the map, which owns it; its rectangle is in scene px, y down.
class ViewerItem : public QGraphicsRectItem
{
public:
    enum { Type = UserType + 1 };

    /// Neither the application nor the map is owned.
    ViewerItem(qrvkp::RvKpApplication* application, CanvasMapItem* map);
    ~ViewerItem() override;

    int type() const override { return Type; }

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    /// A move that would leave the map is dropped whole.
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    /// A drag ends when another item takes the mouse.
    bool sceneEvent(QEvent* event) override;
    /// A drag ends when the item is hidden, disabled or taken out of its scene.
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    void giveMouseBack();

    PointerDrag m_drag;
    QPointF m_pressScenePos;
    CanvasMapItem* const m_mapItem;
};

} // namespace norvel
