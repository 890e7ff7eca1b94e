// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PaintedSource.h"

#include <QPainter>

namespace {

QImage quarters(QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    const int columns = size.width() / 2;
    const int rows = size.height() / 2;
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), PaintedSource::BottomRight);
    painter.fillRect(0, 0, columns, rows, PaintedSource::TopLeft);
    painter.fillRect(columns, 0, size.width() - columns, rows, PaintedSource::TopRight);
    painter.fillRect(0, rows, columns, size.height() - rows, PaintedSource::BottomLeft);
    return picture;
}

} // namespace

QImage PaintedSource::picture(const rvengine::Layer& layer, std::uintptr_t, double, QSize wanted)
{
    const QSize size = wanted.isEmpty() || m_alwaysStored ? m_stored : wanted;
    if (layer.source == Quarters)
        return quarters(size);
    const QColor color(QString::fromStdString(layer.source));
    if (!color.isValid())
        return {};
    QImage picture(size, color.alpha() < 255 ? QImage::Format_ARGB32_Premultiplied
                                             : QImage::Format_RGB32);
    picture.fill(color);
    return picture;
}
