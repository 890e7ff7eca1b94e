// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/CanvasItem.h>

#include <QPainter>

#include <algorithm>
#include <limits>

namespace qrvkp {

namespace {

/// Device px beyond the view that are drawn with it at most: painting computes with integers.
constexpr double largestMargin = 4096.0;

} // namespace

CanvasItem::CanvasItem()
    : m_space({}, {})
{
    setAcceptedMouseButtons(Qt::NoButton);
    setZValue(std::numeric_limits<qreal>::lowest());
}

void CanvasItem::setSpace(const CanvasSpace& space)
{
    prepareGeometryChange();
    m_space = space;
    update();
}

void CanvasItem::setPicture(const QImage& picture)
{
    m_picture = picture;
    update();
}

QRectF CanvasItem::boundingRect() const
{
    // In whole device pixels the canvas reaches over its own rectangle by less than one px.
    return m_space.canvasRect().adjusted(-1, -1, 1, 1) & QRectF(QPointF(), m_space.viewSize());
}

QPainterPath CanvasItem::shape() const
{
    return {};
}

void CanvasItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const double pixelRatio = painter->device()->devicePixelRatioF();
    const QRectF canvas = m_space.canvasPixels(pixelRatio);
    const QRectF view(QPointF(), m_space.viewSize() * pixelRatio);
    painter->scale(1 / pixelRatio, 1 / pixelRatio);
    painter->fillRect(canvas & view, Qt::black);
    if (!m_picture.isNull())
        drawPicture(*painter, canvas, view);
}

/// Draws what is seen of the picture: the whole of it can be larger than painting can bear.
void CanvasItem::drawPicture(QPainter& painter, const QRectF& canvas, const QRectF& view) const
{
    const double xScale = canvas.width() / m_picture.width();
    const double yScale = canvas.height() / m_picture.height();
    // Smoothing looks at the neighbours, also at those beyond the border of the view.
    const double xMargin = std::min(2 * xScale, largestMargin);
    const double yMargin = std::min(2 * yScale, largestMargin);
    const QRectF target = canvas & view.adjusted(-xMargin, -yMargin, xMargin, yMargin);
    if (target.isEmpty())
        return;
    const QRectF source((target.left() - canvas.left()) / xScale,
                        (target.top() - canvas.top()) / yScale, target.width() / xScale,
                        target.height() / yScale);
    painter.setRenderHint(QPainter::SmoothPixmapTransform,
                          canvas.size() != QSizeF(m_picture.size()));
    painter.drawImage(target, m_picture, source);
}

} // namespace qrvkp
