// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QHBoxLayout>

/// The layout of a compare player: a row without margins that tells when an item was added by
/// `addItem`. Widgets come in by `QBoxLayout::addWidget`, which goes past that and tells nothing.
class LabCompareLayout : public QHBoxLayout
{
    Q_OBJECT

public:
    LabCompareLayout();
    ~LabCompareLayout() override;

    void addItem(QLayoutItem* item) override;

signals:
    void subItemsDidChange();
};
