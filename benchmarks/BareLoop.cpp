// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "BareLoop.h"

#include "BenchMedia.h"

#include <QPainter>

#include <algorithm>
#include <thread>

BareLoop::BareLoop(BenchScene kind, QSize canvas)
    : m_canvas(canvas, QImage::Format_RGB32)
{
    add(canvas, QRect(QPoint(0, 0), canvas), 1.0);
    for (const int place : overlayPlaces(kind))
        add(overlayVideo, overlayRectangle(canvas, place), overlayAlpha);
}

void BareLoop::add(QSize video, const QRect& place, double opacity)
{
    // As in the engine, the first reader has all the threads that there are.
    const int cores = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
    const int threads = m_layers.empty() ? std::min(cores, 8) : 1;
    m_layers.push_back({BareReader::open(BenchMedia::video(video), threads), place, opacity});
}

const QImage& BareLoop::render()
{
    static const QImage none;
    m_canvas.fill(Qt::black);
    QPainter painter(&m_canvas);
    for (const Layer& layer : m_layers) {
        if (!layer.reader || !layer.reader->next())
            return none;
        painter.setOpacity(layer.opacity);
        painter.drawImage(layer.place.topLeft(), layer.reader->image(layer.place.size()));
    }
    return m_canvas;
}

bool BareLoop::rewind()
{
    return std::all_of(m_layers.begin(), m_layers.end(),
                       [](const Layer& layer) { return layer.reader && layer.reader->rewind(); });
}
