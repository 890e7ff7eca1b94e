// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QBrush>
#include <QPainter>
#include <QWidget>

namespace norvel {

/// Paints the whole widget as a box with a thin border.
inline void paintBox(QWidget& widget, const QBrush& brush, double opacity)
{
    QPainter painter(&widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(brush);
    painter.setOpacity(opacity);
    const QRect area = widget.rect();
    painter.drawRects(&area, 1);
}

} // namespace norvel
