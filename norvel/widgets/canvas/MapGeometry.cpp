// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/MapGeometry.h>

#include <rvkpcore/RvKpApplication.h>

#include <QGraphicsView>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace norvel {

namespace {

bool isLength(float value)
{
    return std::isfinite(value) && value > 0.0F;
}

/// How much of `side` is seen of a canvas that is longer than the view in this direction: all of
/// it when the `room` of the view, in canvas px, is enough for the `zoomed` canvas.
float seenSide(float side, float room, float zoomed)
{
    return room >= zoomed ? side : room / zoomed * side;
}

/// Moves a stretch that begins at `start` into the map's, in whole px.
int keptWithin(double start, double length, double mapStart, double mapLength)
{
    int kept = wholePixels(start);
    if (mapStart > start)
        kept = wholePixels(mapStart);
    const double beyond = length + kept - (mapLength + mapStart);
    if (beyond > 0.0)
        kept = wholePixels(kept - beyond);
    return kept;
}

} // namespace

MapGeometry MapGeometry::of(qrvkp::RvKpApplication* application)
{
    MapGeometry geometry;
    if (!application)
        return geometry;
    geometry.canvasWidth = application->getRvKpConfig()->getKpSizeWidth();
    geometry.canvasHeight = application->getRvKpConfig()->getKpSizeHeight();
    if (const QGraphicsView* view = application->getGraphicsView()) {
        geometry.viewWidth = static_cast<float>(view->width());
        geometry.viewHeight = static_cast<float>(view->height());
    }
    geometry.scale = application->getCanvasScale();
    geometry.shownWidth = static_cast<float>(application->getCanvasShowDimension().width());
    return geometry;
}

QSizeF MapGeometry::mapSize(int maxSideLength) const
{
    const auto side = static_cast<float>(maxSideLength);
    if (!isLength(canvasWidth) || !isLength(canvasHeight) || !isLength(side))
        return {0.0, 0.0};
    const float width = canvasWidth > canvasHeight ? side : side / canvasHeight * canvasWidth;
    const float height = canvasWidth > canvasHeight ? side / canvasWidth * canvasHeight : side;
    return {static_cast<double>(width), static_cast<double>(height)};
}

QSizeF MapGeometry::viewerSize(const QSizeF& map) const
{
    if (map.isEmpty() || !isLength(scale))
        return map;
    const auto mapWidth = static_cast<float>(map.width());
    const auto mapHeight = static_cast<float>(map.height());
    float width = mapWidth / scale;
    float height = mapHeight / scale;
    // One side of the view is filled by the canvas at scale 1; along the other one it has spare
    // room, into which a zoomed canvas grows before it is cut.
    if (isLength(viewWidth) && isLength(viewHeight)) {
        if (viewHeight / canvasHeight > viewWidth / canvasWidth)
            height =
                seenSide(mapHeight, canvasWidth / viewWidth * viewHeight, scale * canvasHeight);
        else
            width = seenSide(mapWidth, canvasHeight / viewHeight * viewWidth, scale * canvasWidth);
    }
    return {static_cast<double>(width), static_cast<double>(height)};
}

float MapGeometry::viewPixelsPerMapPixel(const QRectF& map) const
{
    const auto width = static_cast<float>(map.width());
    return isLength(width) ? scale * shownWidth / width : 0.0F;
}

QRectF MapGeometry::viewerRect(const QRectF& map, const QSizeF& viewer, const QRectF& current,
                               bool recentre)
{
    if (recentre)
        return {QPointF((map.width() - viewer.width()) * 0.5 + map.x(),
                        (map.height() - viewer.height()) * 0.5 + map.y()),
                viewer};
    const QPointF center = current.center();
    const QRectF rect(QPointF(center.x() - viewer.width() / 2, center.y() - viewer.height() / 2),
                      viewer);
    if (map.contains(rect))
        return rect;
    return {QPointF(keptWithin(rect.left(), rect.width(), map.x(), map.width()),
                    keptWithin(rect.top(), rect.height(), map.y(), map.height())),
            viewer};
}

int wholePixels(double value)
{
    constexpr double largest = QWIDGETSIZE_MAX;
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, -largest, largest));
}

QGraphicsScene* sceneOf(qrvkp::RvKpApplication* application)
{
    const QGraphicsView* view = application ? application->getGraphicsView() : nullptr;
    return view ? view->scene() : nullptr;
}

void pushCanvasPosition(qrvkp::RvKpApplication* application, const MapGeometry& geometry,
                        const QRectF& map, const QRectF& viewer)
{
    if (!application)
        return;
    const float factor = geometry.viewPixelsPerMapPixel(map);
    const auto dx = static_cast<float>(viewer.center().x() - map.center().x());
    const auto dy = static_cast<float>(viewer.center().y() - map.center().y());
    // Only x is negated: canvas positions grow upward, the map grows downward.
    application->setCanvasPosition(-dx * factor, dy * factor);
}

} // namespace norvel
