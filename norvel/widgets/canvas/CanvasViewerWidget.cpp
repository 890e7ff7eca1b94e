// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/canvas/CanvasViewerWidget.h>

#include <norvel/widgets/canvas/BoxPainter.h>
#include <norvel/widgets/canvas/MapGeometry.h>
#include <norvel/widgets/canvas/ViewerWidget.h>

#include <rvkpcore/RvKpApplication.h>

#include <QGraphicsScene>
#include <QGraphicsView>

namespace norvel {

CanvasViewerWidget::CanvasViewerWidget(qrvkp::RvKpApplication* application, QWidget* parent)
    : QWidget(parent)
    , m_application(application)
    , m_viewerWidget(new ViewerWidget(application, this))
{
    move(0, 0);
    connect(m_viewerWidget, SIGNAL(sigMoved(QPointF)), this, SIGNAL(sigMoved(QPointF)));
    if (const QGraphicsScene* scene = sceneOf(m_application))
        connect(scene, &QGraphicsScene::sceneRectChanged, this, [this] { update(); });
}

CanvasViewerWidget::~CanvasViewerWidget()
{
    if (m_viewerWidget)
        m_viewerWidget->deleteLater();
}

void CanvasViewerWidget::setCanvasWidgetStyle(const QBrush& brush, const double& opacity)
{
    m_brush = brush;
    m_opacity = opacity;
    QWidget::update();
}

void CanvasViewerWidget::setViewerWidgetStyle(const QBrush& brush, const double& opacity)
{
    if (m_viewerWidget)
        m_viewerWidget->setStyle(brush, opacity);
}

void CanvasViewerWidget::setEnterCursor(const QCursor& cursor)
{
    if (m_viewerWidget)
        m_viewerWidget->setEnterCursor(cursor);
}

void CanvasViewerWidget::setMaxSideLength(int length)
{
    m_maxSideLength = length;
}

void CanvasViewerWidget::show()
{
    QWidget::show();
    if (m_viewerWidget)
        m_viewerWidget->show();
    update();
}

void CanvasViewerWidget::hide()
{
    QWidget::hide();
    if (m_viewerWidget) {
        m_viewerWidget->hide();
        m_viewerWidget->recentre();
    }
    update();
}

void CanvasViewerWidget::setCenter()
{
    if (m_viewerWidget)
        m_viewerWidget->recentre();
    update();
}

void CanvasViewerWidget::setCenter(QPointF point, float scale)
{
    if (!m_application)
        return;
    const auto* config = m_application->getRvKpConfig();
    const QPointF canvasPoint(static_cast<double>(config->getKpSizeWidth()) * point.x(),
                              static_cast<double>(config->getKpSizeHeight()) * point.y());
    m_application->setCanvasScale(scale);
    update();
    const QGraphicsView* view = m_application->getGraphicsView();
    const float factor = MapGeometry::of(m_application).viewPixelsPerMapPixel(m_rect);
    if (!view || !m_viewerWidget || !(factor > 0.0F))
        return;
    const QPointF shown = m_application->convertCanvasToView(canvasPoint);
    const QPointF offCenter = shown - view->rect().center();
    m_viewerWidget->moveBy(offCenter.x() / static_cast<double>(factor),
                           offCenter.y() / static_cast<double>(factor));
}

void CanvasViewerWidget::update()
{
    const MapGeometry geometry = MapGeometry::of(m_application);
    const QSizeF size = geometry.mapSize(m_maxSideLength);
    setFixedSize(wholePixels(size.width()), wholePixels(size.height()));
    m_rect = QRectF(QPointF(0.0, 0.0), size);
    if (m_viewerWidget) {
        if (geometry.scale <= 1.0F)
            m_viewerWidget->recentre();
        m_viewerWidget->layOut(m_rect, geometry);
    }
    QWidget::update();
}

void CanvasViewerWidget::mouseMoveEvent(QMouseEvent*) {}

void CanvasViewerWidget::paintEvent(QPaintEvent*)
{
    paintBox(*this, m_brush, m_opacity);
}

} // namespace norvel
