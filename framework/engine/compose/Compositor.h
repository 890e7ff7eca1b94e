// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/PixelPool.h>
#include <engine/media/PictureSource.h>
#include <engine/scene/Scene.h>

#include "EffectCache.h"

#include <QImage>
#include <QRect>
#include <QSize>

#include <memory>
#include <vector>

namespace rvengine {

/// Makes the pictures of scenes: the main line at the bottom, the mix layers over it, with their
/// effects. Used by one thread at a time.
class Compositor
{
public:
    /// `now` decides when a file of an effect that could not be read is tried again.
    explicit Compositor(std::unique_ptr<PictureSource> source,
                        MonotonicClock now = std::chrono::steady_clock::now);

    /// The whole canvas at `time` ms as a picture of `size` px, Format_RGB32, black where nothing
    /// is. A file that cannot be read is black. Null for an empty size.
    QImage compose(const Scene& scene, long long time, QSize size);

    /// Has opened beside, for one who plays on from `time` ms, what comes into view in the next two
    /// seconds.
    void prepare(const Scene& scene, long long time);

private:
    struct Item;
    struct Frame;

    QImage& canvas(Frame& frame);
    void drawLayer(Frame& frame, const Item& item);
    QImage content(Frame& frame, const Item& item, QSize wanted);
    void drawCut(Frame& frame, const Item& item, const QImage& content);
    void applyToCanvas(Frame& frame, const PlacedLayer& effect);
    void applyFilter(const Layer& filter, QImage& picture);

    const std::unique_ptr<PictureSource> m_source;
    EffectCache m_effects;
    PixelPool m_canvases;
    PixelPool m_cuts;
};

} // namespace rvengine
