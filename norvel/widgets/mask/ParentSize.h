// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace norvel {

/// Gives the widget, as a fixed size, the size of its parent widget unless it has it.
inline void takeParentSize(QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    if (parent && parent->size() != widget.size())
        widget.setFixedSize(parent->width(), parent->height());
}

} // namespace norvel
