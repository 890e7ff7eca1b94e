// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>

#include <QImage>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QSizeF>

class QPainter;

namespace rvengine {

/// The canvas, y up, as a picture, y down.
struct CanvasGeometry
{
    QSizeF canvas; ///< canvas px
    QSize picture; ///< px

    double scaleX() const { return picture.width() / canvas.width(); }
    double scaleY() const { return picture.height() / canvas.height(); }
    /// Px for each canvas px; pictures have the shape of the canvas but for rounding.
    double scale() const { return scaleX(); }
    QPointF toPicture(QPointF point) const
    {
        return {point.x() * scaleX(), (canvas.height() - point.y()) * scaleY()};
    }
};

/// The pixels that the content of a layer has for those who work on them.
QSize contentPixels(const Placement& placement);

/// Where a layer is drawn in a picture of the canvas.
class LayerGeometry
{
public:
    LayerGeometry(const Placement& placement, const CanvasGeometry& canvas);

    /// False when nothing of the layer is in the picture, or its placement makes no sense.
    bool isSeen() const { return m_seen; }
    /// The size in px that the content covers, at most that of the largest picture which is worth
    /// making; empty when it covers more.
    QSize contentSize() const;
    /// Whether `content`, if it is opaque, is the whole picture as it is.
    bool isWhole(const QImage& content) const;
    /// What the layer touches at most, px.
    QRect bounds() const { return m_bounds; }
    /// Draws the content stretched to its place. Without rotation its edges are put on whole px.
    void draw(QPainter& painter, const QImage& content) const;

private:
    void drawUpright(QPainter& painter, const QImage& content) const;

    QPointF m_center;
    QSizeF m_size; ///< px
    double m_rotation = 0.0;
    QSize m_picture;
    QRect m_bounds;
    bool m_seen = false;
};

} // namespace rvengine
