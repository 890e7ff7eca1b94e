// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPixmap>

namespace norvel {

/// A transparent pixmap of that size, px; a null one for a size without an area, or with one that
/// no picture has and no memory should be asked for.
inline QPixmap transparentPixmap(const QSize& size)
{
    constexpr qint64 mostPixels = qint64(1) << 27;
    constexpr int longestSide = 32767; // beyond it Qt does not paint
    if (size.isEmpty() || size.width() > longestSide || size.height() > longestSide ||
        qint64(size.width()) * size.height() > mostPixels)
        return {};
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace norvel
