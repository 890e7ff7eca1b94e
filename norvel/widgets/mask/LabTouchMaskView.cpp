// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/mask/LabTouchMaskView.h>

#include <norvel/widgets/mask/ParentSize.h>

#include <QMouseEvent>
#include <QPainter>

LabTouchMaskView::LabTouchMaskView(QWidget* parent)
    : QWidget(parent)
{
    qRegisterMetaType<LabTouchMaskView::LabPathChangeType>(); // for queued connections
}

LabTouchMaskView::~LabTouchMaskView() = default;

void LabTouchMaskView::mousePressEvent(QMouseEvent* event)
{
    m_lastPoint = event->pos();
    if (event->button() == Qt::LeftButton)
        emit maskMouseEvent(LabPathBegin, m_lastPoint);
}

void LabTouchMaskView::mouseMoveEvent(QMouseEvent* event)
{
    m_lastPoint = event->pos();
    if (event->buttons() != Qt::LeftButton)
        return;
    update();
    emit maskMouseEvent(LabPathMove, m_lastPoint);
}

void LabTouchMaskView::mouseReleaseEvent(QMouseEvent* event)
{
    m_lastPoint = event->pos();
    if (event->button() != Qt::LeftButton)
        return;
    update();
    emit maskMouseEvent(LabPathEnd, m_lastPoint);
}

void LabTouchMaskView::paintEvent(QPaintEvent*)
{
    reloadSizeIfNeed();
    if (touchImage.isNull())
        return;
    QPainter painter(this);
    painter.drawImage(m_lastPoint.x() - touchImage.width() / 2,
                      m_lastPoint.y() - touchImage.height() / 2, touchImage);
}

void LabTouchMaskView::reloadSizeIfNeed()
{
    norvel::takeParentSize(*this);
}
