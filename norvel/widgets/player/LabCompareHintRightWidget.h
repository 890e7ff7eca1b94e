// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

/// The container of the hint to the right of a compare player's line: shows only what is right of
/// the line.
class LabCompareHintRightWidget : public QWidget
{
    Q_OBJECT

public:
    explicit LabCompareHintRightWidget(QWidget* parent);
    ~LabCompareHintRightWidget() override;

    /// Where the line is, px from the left edge of the container.
    void setOffset(float offset);
    float offset() const { return m_offset; }

private:
    float m_offset = 0.0F;
};
