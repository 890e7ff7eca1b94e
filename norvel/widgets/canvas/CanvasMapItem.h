// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QGraphicsRectItem>
#include <QPointer>

#include <functional>

class QGraphicsScene;

namespace qrvkp {
class RvKpApplication;
}

namespace norvel {

class ViewerItem;

/// The map of the canvas in the framework's own scene, with the viewer on it. Its rectangle is in
/// scene px, y down.
class CanvasMapItem : public QGraphicsRectItem
{
public:
    /// Adds itself and the viewer to the scene of the framework's graphics view, if there is one.
    /// `gone` is called when the item is destroyed, which the scene may do too. The application is
    /// not owned.
    CanvasMapItem(qrvkp::RvKpApplication* application, std::function<void()> gone);
    /// Takes both items out of the scene and deletes the viewer.
    ~CanvasMapItem() override;

    ViewerItem* viewerItem() const { return m_viewerItem; }
    /// Has the next layout put the viewer in the middle of the map.
    void recentre() { m_recentre = true; }
    /// Lays the map out with its top left corner there, scene px, and the viewer on it, and pans
    /// the canvas accordingly.
    void layOut(const QPointF& position, int maxSideLength);
    /// Pans the canvas to where the viewer is.
    void pushCanvasPosition();

private:
    ViewerItem* m_viewerItem;
    qrvkp::RvKpApplication* const m_application;
    const QPointer<QGraphicsScene> m_scene;
    bool m_recentre = true;
    const std::function<void()> m_gone;
};

} // namespace norvel
