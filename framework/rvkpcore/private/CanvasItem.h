// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/private/CanvasSpace.h>

#include <QGraphicsObject>
#include <QImage>

namespace qrvkp {

/// The canvas in the scene of its view, whose coordinates are px of the viewport: the picture on
/// the black canvas, below all other items and out of the way of the mouse.
///
/// A picture of as many pixels as the canvas covers on the device is drawn pixel for pixel.
class CanvasItem : public QGraphicsObject
{
public:
    CanvasItem();

    void setSpace(const CanvasSpace& space);
    /// A null picture leaves the canvas black.
    void setPicture(const QImage& picture);

    QRectF boundingRect() const override;
    /// Empty: whoever looks for the item at a point finds those on the canvas, not the canvas.
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    void drawPicture(QPainter& painter, const QRectF& canvas, const QRectF& view) const;

    CanvasSpace m_space;
    QImage m_picture;
};

} // namespace qrvkp
