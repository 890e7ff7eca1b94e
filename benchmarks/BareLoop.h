// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "BareReader.h"
#include "BenchScene.h"

#include <QImage>
#include <QRect>
#include <QSize>

#include <memory>
#include <vector>

/// What no renderer of the scene can do without: decodes each layer, converts it to the size in
/// which it is seen, and draws it with one call of a painter. It leaves the matte out: the layer
/// that is cut is drawn whole. One thread only.
class BareLoop
{
public:
    BareLoop(BenchScene kind, QSize canvas);

    /// The next picture of the canvas, null if there is none. The next call writes to the same
    /// memory.
    const QImage& render();
    /// Begins with the first picture again; false if that is not to be had.
    bool rewind();

private:
    struct Layer
    {
        std::unique_ptr<BareReader> reader;
        QRect place; ///< on the canvas, px
        double opacity;
    };

    void add(QSize video, const QRect& place, double opacity);

    std::vector<Layer> m_layers;
    QImage m_canvas;
};
