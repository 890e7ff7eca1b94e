// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/player/LabCompareMaskView.h>

#include <norvel/widgets/player/LabCompareHintRightWidget.h>

#include <QDateTime>
#include <QDebug>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Wider than any screen, and narrow enough to be added to without overflow.
constexpr int widestControl = 1000000;

} // namespace

LabCompareMaskView::LabCompareMaskView(QWidget* parent, Clock clock)
    : QWidget(parent)
    , m_clock(clock ? std::move(clock) : QDateTime::currentMSecsSinceEpoch)
{
    // When it is first shown, Qt would fit it to its hints, which may be empty: what has no size is
    // never painted, and would never take the size of its parent.
    setAttribute(Qt::WA_Resized);
}

LabCompareMaskView::~LabCompareMaskView()
{
    qDebug() << "mask View delete";
}

void LabCompareMaskView::setLineColor(const QColor& color)
{
    m_lineColor = color;
    repaintStrip();
}

void LabCompareMaskView::setLineWidth(int width)
{
    m_lineWidth = width;
    repaintStrip();
}

void LabCompareMaskView::setIconImage(const QImage& image)
{
    m_icon = image;
    m_iconSize = image.size();
    repaintStrip();
}

void LabCompareMaskView::setIconSize(const QSize& size)
{
    m_iconSize = size;
    repaintStrip();
}

void LabCompareMaskView::setControlWidth(int width)
{
    m_controlWidth = std::clamp(width, 0, widestControl);
}

void LabCompareMaskView::setLimitRect(const QRect& rect)
{
    m_limitRect = rect;
    if (!rect.isNull()) {
        if (m_lineX > rect.right())
            putLine(rect.right());
        else if (m_lineX < rect.left())
            putLine(rect.left());
    }
    layOutHints();
}

void LabCompareMaskView::setHintRect(const QRect& rect)
{
    m_hintRect = rect;
    layOutHints();
}

QWidget* LabCompareMaskView::leftHintWidget()
{
    if (!m_leftHint) {
        m_leftHint = new QWidget(this);
        m_leftHint->show();
        layOutHints();
    }
    return m_leftHint;
}

QWidget* LabCompareMaskView::rightHintWidget()
{
    if (!m_rightHint) {
        m_rightHint = new LabCompareHintRightWidget(this);
        m_rightHint->show();
        layOutHints();
    }
    return m_rightHint;
}

void LabCompareMaskView::tellLine()
{
    emit maskCompareEvent(QPointF(m_lineX, m_iconY));
}

void LabCompareMaskView::moveToCenter()
{
    m_relX = 0.5F;
    putLine(width() * 0.5);
    tellLine();
}

void LabCompareMaskView::putLine(double x)
{
    m_lastDeltaX = static_cast<float>(x - m_lineX);
    m_lineX = x;
    repaintStrip();
}

void LabCompareMaskView::mousePressEvent(QMouseEvent* event)
{
    const QPointF pos = event->pos();
    m_draggingLine =
        event->button() == Qt::LeftButton && std::abs(pos.x() - m_lineX) < m_controlWidth / 2.0;
    m_draggingIcon = m_draggingLine && !m_icon.isNull() &&
                     std::abs(pos.x() - m_lineX) < m_icon.width() / 2.0 &&
                     std::abs(pos.y() - m_iconY) < m_icon.height() / 2.0;
    if (m_draggingLine)
        m_lastPos = event->pos();
}

void LabCompareMaskView::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() != Qt::LeftButton)
        return;
    if (m_draggingLine)
        moveLine(event->pos().x() - m_lastPos.x());
    if (m_draggingIcon)
        moveIcon(event->pos().y() - m_lastPos.y());
    m_lastPos = event->pos();
    repaintStrip();
    layOutHints();
    tellLineThrottled();
}

void LabCompareMaskView::moveLine(int step)
{
    const int x = static_cast<int>(step + m_lineX);
    const bool isLimited = !m_limitRect.isNull();
    if (x <= 0 || x >= width() ||
        (isLimited && (x < m_limitRect.left() || x > m_limitRect.right() + 1)))
        return;
    m_lastDeltaX = static_cast<float>(x - m_lineX);
    m_lineX = x;
    if (m_areaWidth == 0.0F || m_areaHeight == 0.0F)
        return; // never shown: there is no area yet of which to be a share
    m_relX =
        (static_cast<float>(x) - (static_cast<float>(width()) - m_areaWidth) * 0.5F) / m_areaWidth;
}

void LabCompareMaskView::moveIcon(int step)
{
    const int y = static_cast<int>(step + m_iconY);
    if (y <= 0 || y >= height())
        return;
    m_iconY = y;
    if (m_areaWidth == 0.0F || m_areaHeight == 0.0F)
        return;
    m_relY = (static_cast<float>(y) - (static_cast<float>(height()) - m_areaHeight) * 0.5F) /
             m_areaHeight;
}

void LabCompareMaskView::tellLineThrottled()
{
    if (m_throttle) {
        const qint64 now = m_clock();
        if (now - m_lastEmitMs <= m_throttleMs)
            return;
        m_lastEmitMs = now;
    }
    tellLine();
}

void LabCompareMaskView::mouseReleaseEvent(QMouseEvent*)
{
    tellLine();
}

void LabCompareMaskView::resizeEvent(QResizeEvent* event)
{
    computeArea();
    repaintStrip();
    emit maskChangeSize(event->size(), event->oldSize());
}

void LabCompareMaskView::computeArea()
{
    if (width() <= 0 || height() <= 0)
        return;
    const auto viewWidth = static_cast<float>(width());
    const auto viewHeight = static_cast<float>(height());
    if (m_areaAspect > viewWidth / viewHeight) {
        m_areaWidth = viewWidth;
        m_areaHeight = viewWidth / m_areaAspect;
    } else {
        m_areaHeight = viewHeight;
        m_areaWidth = viewHeight * m_areaAspect;
    }
    m_lineX = static_cast<int>((viewWidth - m_areaWidth) * 0.5F + m_areaWidth * m_relX);
    m_iconY = static_cast<int>((viewHeight - m_areaHeight) * 0.5F + m_areaHeight * m_relY);
}

void LabCompareMaskView::takeParentSize()
{
    const QWidget* parent = parentWidget();
    if (parent && parent->size() != size())
        setFixedSize(parent->width(), parent->height());
    // Hidden, it is told of its new size only when it is shown.
    if (testAttribute(Qt::WA_PendingResizeEvent))
        computeArea();
}

void LabCompareMaskView::paintEvent(QPaintEvent*)
{
    takeParentSize();
    if (m_areaWidth == 0.0F || m_areaHeight == 0.0F)
        computeArea();
    {
        QPainter painter(this);
        painter.setPen(
            QPen(QBrush(m_lineColor), m_lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawLine(QPointF(m_lineX, 0.0), QPointF(m_lineX, height()));
        if (!m_icon.isNull()) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            const QPoint corner(static_cast<int>(m_lineX - m_iconSize.width() / 2),
                                static_cast<int>(m_iconY - m_iconSize.height() / 2));
            painter.drawImage(QRect(corner, m_iconSize), m_icon);
        }
    }
    if (!m_emitOnFirstPaint)
        return;
    m_emitOnFirstPaint = false;
    tellLine();
    layOutHints();
}

void LabCompareMaskView::repaintStrip()
{
    const double delta = static_cast<double>(m_lastDeltaX);
    const int left = static_cast<int>(m_lineX - m_controlWidth);
    const int right = static_cast<int>(m_lineX + m_controlWidth);
    const int from = delta > 0.0 ? static_cast<int>(left - delta) : left;
    const int to = delta > 0.0 ? right : static_cast<int>(right - delta);
    update(from, 0, to - from, height());
}

void LabCompareMaskView::layOutHints()
{
    if (m_hintRect.isNull())
        return;
    if (m_leftHint)
        m_leftHint->setGeometry(m_hintRect.x(), m_hintRect.y(),
                                static_cast<int>(m_lineX - m_hintRect.x()), m_hintHeight);
    if (m_rightHint) {
        const int center = m_hintRect.center().x();
        const int half = m_hintRect.width() / 2;
        m_rightHint->setGeometry(center, m_hintRect.y(), half, m_hintHeight);
        m_rightHint->setOffset(
            std::min(static_cast<float>(m_lineX - center), static_cast<float>(half - 1)));
    }
}
