// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

// Strokes painted by hand, as masks are expected to have them.

constexpr double usualOpacity = static_cast<double>(0.38F);

/// What a stroke of a tool leaves in a mask: the bare painting, by hand.
inline QImage painted(const QPainterPath& path, int width,
                      const QColor& color = QColor(0, 0, 255, 255), double opacity = usualOpacity,
                      QPainter::CompositionMode mode = QPainter::CompositionMode_Source,
                      const QImage& before = {}, const QSize& size = {400, 200})
{
    QImage image = before;
    if (image.isNull()) {
        image = QImage(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setCompositionMode(mode);
    painter.setOpacity(opacity);
    painter.drawPath(path);
    return image;
}

inline QPainterPath line(const QPointF& from, const QPointF& to)
{
    QPainterPath path(from);
    path.lineTo(to);
    return path;
}

/// White where a grey of the painting is not 0.
inline QImage blackAndWhite(const QImage& image)
{
    QImage grey = image.convertToFormat(QImage::Format_Grayscale8);
    for (int y = 0; y < grey.height(); ++y) {
        for (int x = 0; x < grey.width(); ++x)
            grey.scanLine(y)[x] = grey.scanLine(y)[x] ? 255 : 0;
    }
    return grey;
}

/// What the widget shows, without its parent's background.
inline QImage shown(QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget.render(&image, {}, {}, {});
    return image;
}
