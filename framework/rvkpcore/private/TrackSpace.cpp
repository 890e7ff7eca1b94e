// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/TrackSpace.h>

#include <rvkpcore/private/FinitePoint.h>
#include <rvkpcore/private/NativeTrack.h>

#include <QtMath>

namespace qrvkp {

namespace {

/// Many turns are none: taken off exactly, before the radians lose what is left.
double radians(float degrees)
{
    return qDegreesToRadians(std::remainder(static_cast<double>(degrees), 360.0));
}

} // namespace

TrackSpace::TrackSpace(const NativeMediaTrack& track)
    : m_width(static_cast<double>(track.width))
    , m_height(static_cast<double>(track.height))
    , m_centre(static_cast<double>(track.positionX), static_cast<double>(track.positionY))
    , m_scale(static_cast<double>(track.scale))
    , m_cosine(std::cos(radians(track.rotation)))
    , m_sine(std::sin(radians(track.rotation)))
{
}

QPointF TrackSpace::placed(const QPointF& trackPoint) const
{
    const QPointF offset = (trackPoint - QPointF(m_width, m_height) / 2) * m_scale;
    const QPointF turned(offset.x() * m_cosine + offset.y() * m_sine,
                         offset.y() * m_cosine - offset.x() * m_sine);
    return m_centre + turned;
}

QPointF TrackSpace::toCanvas(const QPointF& trackPoint) const
{
    return finiteOr(placed(trackPoint), trackPoint);
}

QPointF TrackSpace::toTrack(const QPointF& canvasPoint) const
{
    const QPointF middle = QPointF(m_width, m_height) / 2;
    if (m_scale == 0.0)
        return finiteOr(middle, canvasPoint);
    const QPointF turned = canvasPoint - m_centre;
    const QPointF offset(turned.x() * m_cosine - turned.y() * m_sine,
                         turned.x() * m_sine + turned.y() * m_cosine);
    return finiteOr(middle + offset / m_scale, canvasPoint);
}

QPointF TrackSpace::fractionToCanvas(const QPointF& fraction) const
{
    const QPointF trackPoint(fraction.x() * m_width, (1.0 - fraction.y()) * m_height);
    return finiteOr(placed(trackPoint), fraction);
}

} // namespace qrvkp
