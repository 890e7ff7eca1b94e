// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LayerGeometry.h"

#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace rvengine {

namespace {

/// Beyond it, coordinates lose their whole pixels.
constexpr double farthest = 1.0e6;
constexpr int largestContent = 8192;

bool isNear(double value)
{
    return std::isfinite(value) && std::abs(value) <= farthest;
}

/// A rectangle with its edges on whole px.
QRect wholePixels(QPointF center, QSizeF size)
{
    const auto edge = [](double value) { return static_cast<int>(std::lround(value)); };
    const int left = edge(center.x() - size.width() / 2.0);
    const int top = edge(center.y() - size.height() / 2.0);
    const int right = edge(center.x() + size.width() / 2.0);
    const int bottom = edge(center.y() + size.height() / 2.0);
    return {left, top, std::max(right - left, 1), std::max(bottom - top, 1)};
}

QRect boundsOf(QPointF center, QSizeF size, double rotation)
{
    if (rotation == 0.0)
        return wholePixels(center, size);
    QTransform transform;
    transform.translate(center.x(), center.y());
    transform.rotate(rotation);
    const QRectF content(QPointF(-size.width() / 2.0, -size.height() / 2.0), size);
    return transform.mapRect(content).toAlignedRect();
}

} // namespace

QSize contentPixels(const Placement& placement)
{
    const auto side = [](double px) {
        return static_cast<int>(std::lround(std::clamp(px, 1.0, farthest)));
    };
    return {side(placement.width), side(placement.height)};
}

LayerGeometry::LayerGeometry(const Placement& placement, const CanvasGeometry& canvas)
    : m_center(canvas.toPicture(placement.center))
    , m_size(placement.width * placement.scale * canvas.scaleX(),
             placement.height * placement.scale * canvas.scaleY())
    , m_picture(canvas.picture)
{
    m_seen = isNear(m_center.x()) && isNear(m_center.y()) && isNear(m_size.width()) &&
             isNear(m_size.height()) && m_size.width() > 0.0 && m_size.height() > 0.0 &&
             std::isfinite(placement.rotation);
    if (!m_seen)
        return;
    m_rotation = std::fmod(placement.rotation, 360.0);
    m_bounds = boundsOf(m_center, m_size, m_rotation);
    m_seen = m_bounds.intersects(QRect(QPoint(), m_picture));
}

QSize LayerGeometry::contentSize() const
{
    const QSize size = m_rotation == 0.0 ? m_bounds.size() : m_size.toSize();
    if (size.width() > largestContent || size.height() > largestContent)
        return {};
    return size.expandedTo(QSize(1, 1));
}

bool LayerGeometry::isWhole(const QImage& content) const
{
    return m_rotation == 0.0 && m_bounds == QRect(QPoint(), m_picture) &&
           content.size() == m_picture;
}

void LayerGeometry::draw(QPainter& painter, const QImage& content) const
{
    if (m_rotation == 0.0) {
        drawUpright(painter, content);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    painter.translate(m_center);
    painter.rotate(m_rotation);
    painter.drawImage(QRectF(QPointF(-m_size.width() / 2.0, -m_size.height() / 2.0), m_size),
                      content);
    painter.restore();
}

void LayerGeometry::drawUpright(QPainter& painter, const QImage& content) const
{
    if (content.size() == m_bounds.size()) {
        painter.drawImage(m_bounds.topLeft(), content);
        return;
    }
    // Of a content that is much larger than the picture only what is seen is stretched.
    const QRectF seen(m_bounds & QRect(QPoint(), m_picture));
    const double columns = static_cast<double>(content.width()) / m_bounds.width();
    const double rows = static_cast<double>(content.height()) / m_bounds.height();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(seen, content,
                      QRectF((seen.x() - m_bounds.x()) * columns, (seen.y() - m_bounds.y()) * rows,
                             seen.width() * columns, seen.height() * rows));
}

} // namespace rvengine
