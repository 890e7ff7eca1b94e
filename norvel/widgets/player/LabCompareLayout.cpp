// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/player/LabCompareLayout.h>

LabCompareLayout::LabCompareLayout()
{
    setContentsMargins(0, 0, 0, 0);
}

LabCompareLayout::~LabCompareLayout() = default;

void LabCompareLayout::addItem(QLayoutItem* item)
{
    QHBoxLayout::addItem(item);
    emit subItemsDidChange();
}
