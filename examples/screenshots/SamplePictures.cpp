// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SamplePictures.h"

#include <QPainter>
#include <QPainterPath>

namespace {

/// A hill that rises to `top` at `middle` and falls to the lower border, in parts of the picture.
QPainterPath hill(const QSize& size, double middle, double top, double width)
{
    const double w = size.width();
    const double h = size.height();
    QPainterPath path(QPointF((middle - width) * w, h));
    path.quadTo(QPointF(middle * w, (2 * top - 1) * h), QPointF((middle + width) * w, h));
    return path;
}

} // namespace

QImage samplePictures::landscape(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(120, 175, 220));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const int step = size.height() / 6;
    painter.setBrush(QColor(250, 215, 110));
    painter.drawEllipse(QPoint(size.width() * 3 / 4, size.height() / 4), step, step);
    painter.setBrush(QColor(110, 140, 110));
    painter.drawPath(hill(size, 0.3, 0.35, 0.45));
    painter.setBrush(QColor(80, 120, 80));
    painter.drawPath(hill(size, 0.8, 0.5, 0.5));
    painter.setBrush(QColor(60, 95, 60));
    painter.drawPath(hill(size, 0.1, 0.7, 0.6));
    painter.setBrush(QColor(255, 255, 255, 140));
    for (int x = step / 2; x < size.width(); x += step) {
        for (int y = step / 2; y < size.height(); y += step)
            painter.drawEllipse(QPoint(x, y), step / 20, step / 20);
    }
    return image;
}

QRect samplePictures::faceRect(const QSize& size)
{
    QRect rect(0, 0, size.height() * 3 / 5, size.height() * 4 / 5);
    rect.moveCenter({size.width() / 2, size.height() / 2});
    return rect;
}

QImage samplePictures::face(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(70, 85, 100));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRect rect = faceRect(size);
    const int unit = rect.width() / 12;
    painter.setBrush(QColor(90, 60, 40));
    painter.drawEllipse(rect.adjusted(-unit, -unit, unit, -2 * unit));
    painter.setBrush(QColor(235, 200, 170));
    painter.drawEllipse(rect);
    for (const int side : {-1, 1}) {
        const QPoint eye = rect.center() + QPoint(side * 3 * unit, -unit);
        painter.setBrush(Qt::white);
        painter.drawEllipse(eye, unit * 3 / 2, unit);
        painter.setBrush(QColor(50, 70, 90));
        painter.drawEllipse(eye, unit * 3 / 4, unit * 3 / 4);
    }
    painter.setBrush(QColor(190, 90, 90));
    painter.drawEllipse(rect.center() + QPoint(0, 5 * unit), 2 * unit, unit / 2);
    painter.setBrush(QColor(220, 180, 150));
    painter.drawEllipse(rect.center() + QPoint(0, 2 * unit), unit * 3 / 4, unit * 3 / 2);
    return image;
}
