// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/mask/RvTrackMaskWidget.h>

#include <norvel/widgets/mask/MaskPixmap.h>
#include <norvel/widgets/common/PointerDrag.h>

#include <rvkpcore/RvIMediaTrack.h>
#include <rvkpcore/RvITrack.h>
#include <rvkpcore/RvKpApplication.h>

#include <QCursor>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int largestCursor = 4096; ///< px; nobody sees all of a larger one
constexpr int widestPen = 32767;    ///< px, of Qt

/// A length as whole px; what is no length is none.
int lengthOf(double length, int largest = QWIDGETSIZE_MAX)
{
    if (!(length >= 1.0))
        return 0;
    return static_cast<int>(std::min(length, static_cast<double>(largest)));
}

/// Whether a premultiplied colour has a grey value that is not 0, as QImage turns colours grey.
bool isGrey(QRgb color)
{
    if ((color & RGB_MASK) == 0)
        return false;
    // Unpremultiplied it only gets brighter.
    return qGray(color) != 0 || qGray(qUnpremultiply(color)) != 0;
}

int coordinateOf(double value)
{
    return std::isfinite(value) ? static_cast<int>(std::clamp(value, -1.0e6, 1.0e6)) : 0;
}

} // namespace

RvTrackMaskWidget::RvTrackMaskWidget(qrvkp::RvKpApplication* application, QWidget* parent)
    : QWidget(parent)
    , m_application(application)
    , m_drag(std::make_unique<norvel::PointerDrag>(application, [this] { m_isStroking = false; }))
{
    setCursor(createCircleCursor());
}

RvTrackMaskWidget::~RvTrackMaskWidget() = default;

void RvTrackMaskWidget::setTrack(qrvkp::RvITrack* track)
{
    m_track = track;
}

void RvTrackMaskWidget::setDrawTool(RvTrackMaskWidgetDrawTool tool)
{
    m_drawTool = tool;
}

void RvTrackMaskWidget::setPenWidth(int width)
{
    m_penWidth = width;
    setCursor(createCircleCursor());
}

void RvTrackMaskWidget::setEraserWidth(int width)
{
    m_eraserWidth = width;
    setCursor(createCircleCursor());
}

void RvTrackMaskWidget::setPenColorAndOpacity(const QColor& color, const double& opacity)
{
    m_penColor = color;
    m_opacity = opacity;
}

void RvTrackMaskWidget::undo()
{
    step(m_undoStack, m_redoStack);
}

void RvTrackMaskWidget::redo()
{
    step(m_redoStack, m_undoStack);
}

void RvTrackMaskWidget::step(Masks& from, Masks& to)
{
    if (from.empty() || !m_mask)
        return;
    drawPendingStroke();
    m_isStroking = false;
    to.push_back(*m_mask);
    *m_mask = from.back();
    from.pop_back();
    update();
}

void RvTrackMaskWidget::clear()
{
    if (!m_track)
        return;
    m_undoStack.clear();
    m_redoStack.clear();
    m_isStroking = false;
    m_dirty = false;
    makeMask();
    update();
}

void RvTrackMaskWidget::makeMask()
{
    m_maskWidth = m_track->getWidth();
    m_maskHeight = m_track->getHeight();
    m_mask = std::make_unique<QPixmap>(norvel::transparentPixmap(QSize(
        lengthOf(static_cast<double>(m_maskWidth)), lengthOf(static_cast<double>(m_maskHeight)))));
}

void RvTrackMaskWidget::updateGeometry()
{
    if (!m_track || !m_application)
        return;
    const auto cornerAt = [this](const QPointF& fraction) {
        return m_application->convertCanvasToView(
            m_application->convertTrackOriginContentToCanvas(m_track, fraction));
    };
    const QPointF topLeft = cornerAt({0.0, 0.0});
    const QPointF bottomRight = cornerAt({1.0, 1.0});
    move(coordinateOf(topLeft.x()), coordinateOf(topLeft.y()));
    setFixedSize(lengthOf(bottomRight.x() - topLeft.x()), lengthOf(bottomRight.y() - topLeft.y()));
    if (m_mask && m_track->getWidth() == m_maskWidth && m_track->getHeight() == m_maskHeight)
        return;
    // A pending stroke is part of the painting that goes.
    if (m_mask)
        m_dirty = false;
    makeMask();
    update();
}

QImage* RvTrackMaskWidget::getMaskImage() const
{
    if (!m_mask || m_mask->isNull())
        return nullptr;
    drawPendingStroke();
    const QImage image = m_mask->toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    // The lines of an image are padded to multiples of 4 bytes.
    const int bytesPerLine = (image.width() + 3) / 4 * 4;
    auto* const pixels = new uchar[static_cast<std::size_t>(bytesPerLine) *
                                   static_cast<std::size_t>(image.height())];
    uchar* line = pixels;
    for (int y = 0; y < image.height(); ++y, line += bytesPerLine) {
        const auto* const colors = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        uchar* const end = std::transform(colors, colors + image.width(), line, [](QRgb color) {
            return static_cast<uchar>(isGrey(color) ? 255 : 0);
        });
        std::fill(end, line + bytesPerLine, static_cast<uchar>(0));
    }
    return new QImage(pixels, image.width(), image.height(), bytesPerLine,
                      QImage::Format_Grayscale8);
}

QCursor RvTrackMaskWidget::createCircleCursor() const
{
    const int diameter = m_penWidth;
    if (diameter <= 0 || diameter > largestCursor)
        return {};
    QPixmap picture(diameter, diameter);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(QBrush(QColor(255, 255, 255, 150)), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.setBrush(QColor(255, 255, 255, 128));
    painter.drawEllipse(QRect(1, 1, diameter - 3, diameter - 3));
    painter.setPen(QPen(QBrush(m_penColor), 1.0));
    painter.setOpacity(m_opacity);
    const int center = diameter / 2;
    const int arm = diameter / 16;
    painter.drawLine(center - arm, center, center + arm, center);
    painter.drawLine(center, center - arm, center, center + arm);
    painter.end();
    return QCursor(picture, diameter / 2, diameter / 2);
}

QPointF RvTrackMaskWidget::viewPos2PixmapPos(const QPointF& position) const
{
    if (!m_track || !m_application)
        return position;
    const QPointF canvas = m_application->convertViewToCanvas(QPointF(pos()) + position);
    const QPointF track = m_application->convertCanvasToTrack(m_track, canvas);
    return {track.x(), static_cast<double>(m_track->getHeight()) - track.y()};
}

void RvTrackMaskWidget::mousePressEvent(QMouseEvent* event)
{
    m_drag->press(this);
    if (event->button() != Qt::LeftButton || !m_track)
        return;
    drawPendingStroke();
    m_path = QPainterPath();
    m_path.moveTo(viewPos2PixmapPos(event->localPos()));
    m_isStroking = true;
    m_dirty = true;
    if (m_mask)
        m_undoStack.push_back(*m_mask);
    m_redoStack.clear();
    update();
}

void RvTrackMaskWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        continueStroke(event->localPos());
}

void RvTrackMaskWidget::mouseReleaseEvent(QMouseEvent* event)
{
    m_drag->release();
    if (event->button() != Qt::LeftButton)
        return;
    continueStroke(event->localPos());
    m_isStroking = false;
}

void RvTrackMaskWidget::continueStroke(const QPointF& position)
{
    if (!m_isStroking || !m_track)
        return;
    m_path.lineTo(viewPos2PixmapPos(position));
    m_dirty = true;
    update();
}

void RvTrackMaskWidget::hideEvent(QHideEvent*)
{
    // No paint comes as long as the widget is hidden.
    drawPendingStroke();
}

void RvTrackMaskWidget::paintEvent(QPaintEvent*)
{
    drawPendingStroke();
    if (!m_mask || m_mask->isNull())
        return;
    QPainter painter(this);
    painter.drawPixmap(rect(), *m_mask, m_mask->rect());
}

void RvTrackMaskWidget::drawPendingStroke() const
{
    if (!m_dirty || !m_mask)
        return;
    m_dirty = false;
    if (!m_mask->isNull())
        drawStroke();
}

void RvTrackMaskWidget::drawStroke() const
{
    QPainter painter(m_mask.get());
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(m_penColor);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    if (m_drawTool == DrawToolPen) {
        pen.setWidth(strokeWidth(m_penWidth));
        painter.setCompositionMode(QPainter::CompositionMode_Source);
    } else if (m_drawTool == DrawToolEraser) {
        pen.setWidth(strokeWidth(m_eraserWidth));
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
    }
    painter.setPen(pen);
    painter.setOpacity(m_opacity);
    painter.drawPath(m_path);
}

int RvTrackMaskWidget::strokeWidth(int toolWidth) const
{
    const float width = static_cast<float>(toolWidth) * strokeScale();
    return lengthOf(static_cast<double>(width), widestPen);
}

float RvTrackMaskWidget::strokeScale() const
{
    const auto shownWidth = static_cast<float>(width());
    const auto shownHeight = static_cast<float>(height());
    // The ratio is that of mask to widget for a mask that is shown smaller than it is, and that of
    // widget to mask for one that is shown larger: hosts count on strokes that never get thinner
    // than the pen.
    if (m_maskWidth > shownWidth)
        return std::min(m_maskHeight / shownHeight, m_maskWidth / shownWidth);
    if (m_maskWidth < shownWidth)
        return std::min(shownHeight / m_maskHeight, shownWidth / m_maskWidth);
    return 1.0F;
}
