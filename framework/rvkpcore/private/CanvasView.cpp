// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/CanvasView.h>

#include <rvkpcore/private/CanvasItem.h>

#include <QGraphicsScene>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace qrvkp {

namespace {

constexpr double zoomStep = 1.2; ///< of one notch of the wheel
constexpr double angleOfNotch = QWheelEvent::DefaultDeltasPerStep;
constexpr double smallestZoom = 0.05;
constexpr double largestZoom = 50.0;

/// Painting cannot bear more pixels in a row or a column.
constexpr double largestPictureSide = 32767.0;

const QColor surroundings(0x1e, 0x1e, 0x1e);

/// Gestures stay within sensible bounds; where a host has gone beyond, they lead back only.
double zoomedBy(double scale, double notches)
{
    return std::clamp(scale * std::pow(zoomStep, notches), std::min(smallestZoom, scale),
                      std::max(largestZoom, scale));
}

int pictureSide(double covered, double canvas)
{
    return static_cast<int>(
        std::clamp(std::min(covered, std::round(canvas)), 1.0, largestPictureSide));
}

} // namespace

CanvasView::CanvasView(CanvasPlacement& placement)
    : m_placement(placement)
    , m_scene(new QGraphicsScene(this))
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setBackgroundBrush(surroundings);
    m_scene->setSceneRect(viewport()->rect());
    makeItem();
    setScene(m_scene);
    m_announcedSize = wantedPictureSize();
}

CanvasView::~CanvasView()
{
    // Items of a host that go with the scene may call the application, which still knows the view.
    delete m_scene;
}

CanvasSpace CanvasView::space() const
{
    // While it is hidden, the view does not pass a new size on to its viewport.
    const bool isPending = testAttribute(Qt::WA_PendingResizeEvent);
    return {m_placement, isPending ? contentsRect().size() : viewport()->size()};
}

void CanvasView::layOut()
{
    if (m_item)
        m_item->setSpace(space());
    const QSize size = wantedPictureSize();
    if (size == m_announcedSize)
        return;
    m_announcedSize = size;
    emit wantedPictureSizeChanged();
}

void CanvasView::setPicture(const QImage& picture)
{
    m_picture = picture;
    if (m_item)
        m_item->setPicture(picture);
}

QSize CanvasView::wantedPictureSize() const
{
    const QSizeF covered = space().canvasPixels(devicePixelRatioF()).size();
    const QSizeF& canvas = m_placement.canvasSize;
    return {pictureSide(covered.width(), canvas.width()),
            pictureSide(covered.height(), canvas.height())};
}

void CanvasView::setGesturesEnabled(bool enabled)
{
    m_gesturesEnabled = enabled;
    if (!enabled)
        m_dragButton = Qt::NoButton;
}

void CanvasView::makeItem()
{
    m_item = new CanvasItem;
    m_item->setSpace(space());
    m_item->setPicture(m_picture);
    m_scene->addItem(m_item);
    // The canvas comes back when a host has cleared the scene.
    connect(m_item, &QObject::destroyed, this, &CanvasView::makeItem, Qt::QueuedConnection);
}

bool CanvasView::event(QEvent* event)
{
    const bool handled = QGraphicsView::event(event);
    // Another screen can have another number of device pixels per px.
    if (event->type() == QEvent::Show || event->type() == QEvent::ScreenChangeInternal)
        layOut();
    return handled;
}

void CanvasView::resizeEvent(QResizeEvent* event)
{
    layOut();
    // Of the size 0 x 0 the scene would take the rectangle of its items.
    if (!viewport()->size().isNull())
        m_scene->setSceneRect(viewport()->rect());
    QGraphicsView::resizeEvent(event);
}

void CanvasView::wheelEvent(QWheelEvent* event)
{
    QGraphicsView::wheelEvent(event);
    const int angle = event->angleDelta().y();
    if (event->isAccepted() || !m_gesturesEnabled || angle == 0)
        return;
    const double scale = zoomedBy(m_placement.scale, angle / angleOfNotch);
    m_placement.position = space().positionAtScale(scale, event->position());
    m_placement.scale = scale;
    layOut();
    event->accept();
}

void CanvasView::mousePressEvent(QMouseEvent* event)
{
    QGraphicsView::mousePressEvent(event);
    beginDrag(*event);
}

void CanvasView::mouseDoubleClickEvent(QMouseEvent* event)
{
    QGraphicsView::mouseDoubleClickEvent(event);
    beginDrag(*event);
}

void CanvasView::beginDrag(QMouseEvent& event)
{
    // A release can go elsewhere, to a dialog that opened meanwhile: here it is known to have.
    if (event.button() == m_dragButton)
        m_dragButton = Qt::NoButton;
    const bool moves = event.button() == Qt::LeftButton || event.button() == Qt::MiddleButton;
    const bool taken = scene() && scene()->mouseGrabberItem();
    if (!m_gesturesEnabled || !moves || taken || m_dragButton != Qt::NoButton)
        return;
    m_dragButton = event.button();
    m_dragPoint = event.localPos();
    event.accept();
}

void CanvasView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & m_dragButton))
        m_dragButton = Qt::NoButton;
    if (m_dragButton == Qt::NoButton) {
        QGraphicsView::mouseMoveEvent(event);
        return;
    }
    const QPointF moved = event->localPos() - m_dragPoint;
    m_dragPoint = event->localPos();
    m_placement.position += QPointF(moved.x(), -moved.y());
    layOut();
    event->accept();
}

void CanvasView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == m_dragButton)
        m_dragButton = Qt::NoButton;
    QGraphicsView::mouseReleaseEvent(event);
}

} // namespace qrvkp
