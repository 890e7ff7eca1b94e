// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/mask/LabPaintMaskView.h>

#include <norvel/widgets/mask/MaskPixmap.h>
#include <norvel/widgets/mask/ParentSize.h>

#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

/// A blur that makes sense: wider ones only cost time.
qreal blurRadius(float blur)
{
    constexpr double widest = 2000.0;
    const double radius = static_cast<double>(blur) * 5.0;
    return radius > 0.0 ? std::min(radius, widest) : 0.0;
}

QPixmap blurred(const QPixmap& image, qreal radius)
{
    auto* const item = new QGraphicsPixmapItem(image);
    auto* const effect = new QGraphicsBlurEffect;
    effect->setBlurRadius(radius);
    item->setGraphicsEffect(effect);
    QGraphicsScene scene;
    scene.addItem(item);
    QPixmap result(image.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    scene.render(&painter, QRectF(), QRectF(), Qt::KeepAspectRatio);
    return result;
}

} // namespace

LabPaintMaskView::LabPaintMaskView(QWidget* parent)
    : QWidget(parent)
{
    qRegisterMetaType<LabPaintMaskView::LabPathChangeType>(); // for queued connections
    setAttribute(Qt::WA_TranslucentBackground);
    setStyleSheet(QStringLiteral("background-color:transparent;"));
}

LabPaintMaskView::~LabPaintMaskView() = default;

void LabPaintMaskView::setupPaintType(LabPaintType type)
{
    m_paintType = type;
}

void LabPaintMaskView::setupPaintLineWidth(int width)
{
    m_paintLineWidth = width;
}

void LabPaintMaskView::setupEraserWidth(int width)
{
    m_eraserWidth = width;
}

void LabPaintMaskView::setupPaintStrokeColor(QColor color)
{
    m_strokeColor = color;
}

void LabPaintMaskView::setupPaintAlpha(float alpha)
{
    m_paintAlpha = alpha > 0.0F ? std::min(alpha, 1.0F) : 0.0F;
}

void LabPaintMaskView::setupPaintShowRect(QRect faceRect, QRect externalFaceRect)
{
    m_faceRect = faceRect;
    m_externalFaceRect = externalFaceRect;
    m_facePath = QPainterPath();
    m_facePath.addRect(faceRect);
    m_externalFacePath = QPainterPath();
    m_externalFacePath.addRect(externalFaceRect);
}

void LabPaintMaskView::setupPaintMaskImagePixmap(QPixmap pixmap)
{
    m_lastImage = m_maskImage = pixmap;
    update();
}

void LabPaintMaskView::setupPaintAlphaMaskImage(QPixmap pixmap)
{
    m_lastImage = m_maskImage = recoverColorImage(pixmap);
    update();
}

QRect LabPaintMaskView::showFaceRect() const
{
    return m_faceRect;
}

QRect LabPaintMaskView::showExternalFaceRect() const
{
    return m_externalFaceRect;
}

QPixmap LabPaintMaskView::lastPaintBlurMaskImage(float blur, bool clearLast)
{
    const QPixmap image = toImage();
    m_path = QPainterPath();
    m_lastImage = clearLast ? QPixmap() : image;
    return image.isNull() ? image : blurred(image, blurRadius(blur));
}

void LabPaintMaskView::clearAllData()
{
    m_path = QPainterPath();
    m_lastImage = QPixmap();
    m_maskImage = QPixmap();
    update();
}

void LabPaintMaskView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_path.moveTo(event->pos());
    m_lastPoint = event->pos();
    // A flattened painting is dropped by the next stroke; strokes that are still a path stay.
    m_lastImage = QPixmap();
    emit maskMouseEvent(LabPathBegin, event->pos());
}

void LabPaintMaskView::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint position = event->pos();
    if (event->buttons() != Qt::LeftButton || !m_externalFaceRect.contains(position))
        return;
    if (m_path.contains(position) && position != m_path.currentPosition()) {
        // A stroke that folds back into itself would be filled by its own outline.
        m_lastImage = toImage();
        m_path = QPainterPath();
        m_path.moveTo(position);
    } else {
        continuePath();
        const QPoint step = position - m_lastPoint;
        const QPoint third(qRound(step.x() / 3.0), qRound(step.y() / 3.0));
        m_path.cubicTo(m_lastPoint + third, position - third, position);
    }
    m_lastPoint = position;
    update();
    emit maskMouseEvent(LabPathMove, position);
}

void LabPaintMaskView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    continuePath();
    m_path.lineTo(event->pos());
    update();
    emit maskMouseEvent(LabPathEnd, event->pos());
}

void LabPaintMaskView::continuePath()
{
    // A host may take the painting away in the middle of a stroke; the stroke then goes on from
    // where the pointer was and not from the corner of the widget.
    if (m_path.elementCount() == 0)
        m_path.moveTo(m_lastPoint);
}

void LabPaintMaskView::paintEvent(QPaintEvent*)
{
    reloadSizeIfNeed();
    if (paintMode)
        paintDrawForPath(this, m_path, m_lastImage, m_externalFaceRect, m_facePath);
    else if (!m_maskImage.isNull())
        paintDrawForPath(this, QPainterPath(), m_maskImage, m_externalFaceRect, m_facePath);
}

int LabPaintMaskView::currentPaintLineWidth() const
{
    return m_paintType == LabPaintTypePaint ? m_paintLineWidth : m_eraserWidth;
}

void LabPaintMaskView::paintDrawForPath(QPaintDevice* device, const QPainterPath& path,
                                        const QPixmap& pixmap, const QRect& targetRect,
                                        const QPainterPath& clipPath) const
{
    QPainter painter(device);
    if (!clipPath.isEmpty())
        painter.setClipPath(clipPath, Qt::ReplaceClip);
    QColor color = m_strokeColor;
    color.setAlpha(static_cast<int>(m_paintAlpha * 255.0F));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QBrush(color), std::max(currentPaintLineWidth(), 0), Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (!pixmap.isNull())
        painter.drawPixmap(targetRect, pixmap, QRect(0, 0, pixmap.width(), pixmap.height()));
    if (path.elementCount() == 1) {
        const QPointF point = path.currentPosition();
        painter.drawPoints(&point, 1);
    } else {
        painter.drawPath(path);
    }
}

QPixmap LabPaintMaskView::recoverColorImage(const QPixmap& source) const
{
    if (source.isNull())
        return {};
    QImage image = source.toImage().convertToFormat(QImage::Format_RGBA8888);
    const auto red = static_cast<uchar>(m_strokeColor.red());
    const auto green = static_cast<uchar>(m_strokeColor.green());
    const auto blue = static_cast<uchar>(m_strokeColor.blue());
    for (int y = 0; y < image.height(); ++y) {
        uchar* pixel = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x, pixel += 4) {
            pixel[0] = red;
            pixel[1] = green;
            pixel[2] = blue;
        }
    }
    return QPixmap::fromImage(image);
}

QPixmap LabPaintMaskView::toImage() const
{
    const bool whole = m_externalFacePath.isEmpty();
    QPixmap image = norvel::transparentPixmap(whole ? size() : m_externalFaceRect.size());
    if (image.isNull())
        return image;
    if (whole) {
        paintDrawForPath(&image, m_path, m_lastImage, QRect(0, 0, width(), height()), {});
    } else {
        const QPainterPath path =
            m_path.translated(-m_externalFaceRect.left(), -m_externalFaceRect.top());
        paintDrawForPath(&image, path, m_lastImage,
                         QRect(0, 0, m_lastImage.width(), m_lastImage.height()), {});
    }
    return image;
}

void LabPaintMaskView::reloadSizeIfNeed()
{
    norvel::takeParentSize(*this);
}
