// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/CanvasSpace.h>

#include <rvkpcore/private/FinitePoint.h>

#include <algorithm>

namespace qrvkp {

namespace {

bool hasArea(const QSizeF& size)
{
    return std::isfinite(size.width()) && std::isfinite(size.height()) && size.width() > 0 &&
           size.height() > 0;
}

/// Halves always go up: what moves by whole pixels then does so when it is rounded, too.
double rounded(double value)
{
    return std::floor(value + 0.5);
}

} // namespace

CanvasSpace::CanvasSpace(const CanvasPlacement& placement, const QSizeF& viewSize)
    : m_placement(placement)
    , m_viewSize(viewSize)
{
    QSizeF& canvas = m_placement.canvasSize;
    if (!hasArea(canvas))
        canvas = QSizeF(0, 0);
    else if (hasArea(viewSize))
        m_fit = std::min(viewSize.width() / canvas.width(), viewSize.height() / canvas.height());
}

QSizeF CanvasSpace::showSize() const
{
    return m_placement.canvasSize * m_fit;
}

QRectF CanvasSpace::canvasRect() const
{
    const QSizeF& canvas = m_placement.canvasSize;
    return {toView(QPointF(0, canvas.height())), canvas * zoom()};
}

QRectF CanvasSpace::canvasPixels(double pixelRatio) const
{
    const QRectF rect = canvasRect();
    if (rect.isEmpty())
        return {};
    const QSizeF size(std::max(1.0, rounded(rect.width() * pixelRatio)),
                      std::max(1.0, rounded(rect.height() * pixelRatio)));
    const QPointF centre = rect.center() * pixelRatio;
    return {
        QPointF(rounded(centre.x() - size.width() / 2), rounded(centre.y() - size.height() / 2)),
        size};
}

QPointF CanvasSpace::toView(const QPointF& canvasPoint) const
{
    const QSizeF& canvas = m_placement.canvasSize;
    const QPointF& position = m_placement.position;
    const QPointF view(
        m_viewSize.width() / 2 + position.x() + (canvasPoint.x() - canvas.width() / 2) * zoom(),
        m_viewSize.height() / 2 - position.y() - (canvasPoint.y() - canvas.height() / 2) * zoom());
    return finiteOr(view, canvasPoint);
}

QPointF CanvasSpace::toCanvas(const QPointF& viewPoint) const
{
    const QPointF centre(m_placement.canvasSize.width() / 2, m_placement.canvasSize.height() / 2);
    if (zoom() == 0.0)
        return finiteOr(centre, viewPoint);
    const QPointF& position = m_placement.position;
    const QPointF fromCentre(viewPoint.x() - m_viewSize.width() / 2 - position.x(),
                             m_viewSize.height() / 2 - position.y() - viewPoint.y());
    return finiteOr(centre + fromCentre / zoom(), viewPoint);
}

QPointF CanvasSpace::positionAtScale(double scale, const QPointF& viewPoint) const
{
    const QPointF fixed(viewPoint.x() - m_viewSize.width() / 2,
                        m_viewSize.height() / 2 - viewPoint.y());
    const QPointF& position = m_placement.position;
    return finiteOr(fixed + (position - fixed) * (scale / m_placement.scale), position);
}

} // namespace qrvkp
