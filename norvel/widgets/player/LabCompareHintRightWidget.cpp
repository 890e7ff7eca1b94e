// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/player/LabCompareHintRightWidget.h>

#include <QRegion>

LabCompareHintRightWidget::LabCompareHintRightWidget(QWidget* parent)
    : QWidget(parent)
{
    setLayoutDirection(Qt::LeftToRight);
}

LabCompareHintRightWidget::~LabCompareHintRightWidget() = default;

void LabCompareHintRightWidget::setOffset(float offset)
{
    m_offset = offset;
    setMask(QRegion(static_cast<int>(offset + 1.0F), 0,
                    static_cast<int>(static_cast<float>(width()) - offset), height()));
}
