// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Compositor.h"

#include "LayerGeometry.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace rvengine {

namespace {

bool hasPicture(const Layer& layer)
{
    return layer.kind == LayerKind::Video || layer.kind == LayerKind::Picture;
}

bool isEffect(const Layer& layer)
{
    return !hasPicture(layer) && layer.kind != LayerKind::Sound;
}

/// What the layer shows of its file `time` ms after the start of the timeline.
double fileTimeOf(const PlacedLayer& placed, long long time)
{
    return static_cast<double>(placed.layer->fileStart) +
           (static_cast<double>(time) - static_cast<double>(placed.start)) * placed.layer->speed;
}

/// Whether `next` goes on in the file where `previous` ends, as the parts of a clip that was split
/// do.
bool continues(const PlacedLayer& next, const PlacedLayer& previous)
{
    constexpr double rounding = 1.0; // ms
    return next.layer->source == previous.layer->source && next.start == previous.end &&
           std::abs(fileTimeOf(previous, next.start) - fileTimeOf(next, next.start)) <= rounding;
}

/// Whether nothing is seen but the picture of the layer, and nobody else holds that: it needs no
/// copy then.
bool hidesAll(const Layer& layer, const LayerGeometry& geometry, const QImage& picture)
{
    return layer.alpha >= 1.0F && picture.format() == QImage::Format_RGB32 &&
           picture.isDetached() && geometry.isWhole(picture);
}

QImage blackPicture()
{
    QImage black(2, 2, QImage::Format_RGB32);
    black.fill(Qt::black);
    return black;
}

} // namespace

/// A layer that is seen or acts at the time of the frame.
struct Compositor::Item
{
    const PlacedLayer* placed;
    std::uintptr_t lane;

    const Layer& layer() const { return *placed->layer; }
};

struct Compositor::Frame
{
    Frame(const Scene& scene, long long frameTime, QSize size)
        : time(frameTime)
        , geometry{scene.canvas, size}
    {
        for (const PlacedLayer& placed : scene.main)
            add(placed, MainLane);
        for (const PlacedLayer& placed : scene.mix)
            add(placed, placed.layer->key);
    }

    void add(const PlacedLayer& placed, std::uintptr_t lane)
    {
        if (!placed.isAt(time))
            return;
        if (isEffect(*placed.layer))
            (placed.target == EffectTarget::Layer ? bound : items).push_back({&placed, lane});
        else if (hasPicture(*placed.layer) && placed.layer->alpha > 0.0F)
            items.push_back({&placed, lane});
    }

    template <class Function>
    void forEffectsOn(const Item& item, LayerKind kind, Function&& function) const
    {
        for (const Item& effect : bound) {
            if (effect.placed->boundKey == item.layer().key && effect.layer().kind == kind)
                function(*effect.placed);
        }
    }

    bool isCut(const Item& item) const
    {
        bool cut = false;
        forEffectsOn(item, LayerKind::Matte, [&](const PlacedLayer&) { cut = true; });
        return cut;
    }

    const long long time;
    const CanvasGeometry geometry;
    QImage canvas;           ///< null, which is black, before anything is drawn
    std::vector<Item> items; ///< pictures and free effects, from the lowest to the topmost
    std::vector<Item> bound; ///< effects on single layers, from the lowest to the topmost
};

Compositor::Compositor(std::unique_ptr<PictureSource> source, MonotonicClock now)
    : m_source(std::move(source))
    , m_effects(std::move(now))
{
}

QImage Compositor::compose(const Scene& scene, long long time, QSize size)
{
    if (size.isEmpty())
        return {};
    Frame frame(scene, time, size);
    for (const Item& item : frame.items) {
        if (hasPicture(item.layer()))
            drawLayer(frame, item);
        else if (item.placed->target == EffectTarget::Below)
            applyToCanvas(frame, *item.placed);
    }
    for (const Item& item : frame.items) {
        if (isEffect(item.layer()) && item.placed->target == EffectTarget::Canvas)
            applyToCanvas(frame, *item.placed);
    }
    m_source->endFrame();
    m_effects.endFrame();
    return std::move(canvas(frame));
}

void Compositor::prepare(const Scene& scene, long long time)
{
    constexpr long long ahead = 2000;
    const long long horizon = std::min(time, std::numeric_limits<long long>::max() - ahead) + ahead;
    std::vector<const PlacedLayer*> upcoming;
    const auto consider = [&](const PlacedLayer& placed) {
        if (placed.start > time && placed.start <= horizon && hasPicture(*placed.layer) &&
            placed.layer->alpha > 0.0F)
            upcoming.push_back(&placed);
    };
    const PlacedLayer* previous = nullptr;
    for (const PlacedLayer& placed : scene.main) {
        if (!hasPicture(*placed.layer))
            continue;
        if (!previous || !continues(placed, *previous))
            consider(placed);
        previous = &placed;
    }
    for (const PlacedLayer& placed : scene.mix)
        consider(placed);
    std::stable_sort(upcoming.begin(), upcoming.end(),
                     [](const auto* one, const auto* other) { return one->start < other->start; });
    for (const PlacedLayer* const placed : upcoming)
        m_source->prepare(*placed->layer, fileTimeOf(*placed, placed->start));
}

void Compositor::drawLayer(Frame& frame, const Item& item)
{
    const LayerGeometry geometry(item.layer().placement, frame.geometry);
    if (!geometry.isSeen())
        return;
    QImage picture = content(frame, item, geometry.contentSize());
    if (frame.isCut(item)) {
        drawCut(frame, item, picture);
        return;
    }
    if (hidesAll(item.layer(), geometry, picture)) {
        frame.canvas = std::move(picture);
        return;
    }
    QPainter painter(&canvas(frame));
    painter.setOpacity(static_cast<double>(item.layer().alpha));
    geometry.draw(painter, picture);
}

/// The canvas of the frame, to be drawn on.
QImage& Compositor::canvas(Frame& frame)
{
    if (frame.canvas.isNull()) {
        frame.canvas = m_canvases.take(frame.geometry.picture, QImage::Format_RGB32);
        frame.canvas.fill(Qt::black);
    }
    return frame.canvas;
}

QImage Compositor::content(Frame& frame, const Item& item, QSize wanted)
{
    const Layer& layer = item.layer();
    QImage picture =
        m_source->picture(layer, item.lane, fileTimeOf(*item.placed, frame.time), wanted);
    if (picture.isNull())
        return blackPicture();
    const QSize stored = contentPixels(layer.placement);
    frame.forEffectsOn(item, LayerKind::Liquify, [&](const PlacedLayer& effect) {
        m_effects.warp(effect.layer, stored).apply(picture);
    });
    frame.forEffectsOn(item, LayerKind::Filter,
                       [&](const PlacedLayer& effect) { applyFilter(*effect.layer, picture); });
    return picture;
}

void Compositor::drawCut(Frame& frame, const Item& item, const QImage& content)
{
    const LayerGeometry geometry(item.layer().placement, frame.geometry);
    const QRect area = geometry.bounds() & QRect(QPoint(), frame.geometry.picture);
    QImage cut = m_cuts.take(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (cut.isNull())
        return;
    cut.fill(Qt::transparent);
    {
        QPainter painter(&cut);
        painter.translate(-area.topLeft());
        geometry.draw(painter, content);
    }
    frame.forEffectsOn(item, LayerKind::Matte, [&](const PlacedLayer& effect) {
        const QPointF center = frame.geometry.toPicture(effect.layer->matteCenter);
        m_effects.matte(effect.layer->matte, frame.geometry.scale())
            .apply(cut, center - area.topLeft());
    });
    QPainter painter(&canvas(frame));
    painter.setOpacity(static_cast<double>(item.layer().alpha));
    painter.drawImage(area.topLeft(), cut);
}

void Compositor::applyToCanvas(Frame& frame, const PlacedLayer& effect)
{
    const Layer& layer = *effect.layer;
    QImage& picture = canvas(frame);
    if (layer.kind == LayerKind::Filter) {
        applyFilter(layer, picture);
    } else if (layer.kind == LayerKind::Liquify) {
        m_effects.warp(effect.layer, frame.geometry.canvas.toSize()).apply(picture);
    } else if (layer.kind == LayerKind::Matte) {
        QImage cut = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        m_effects.matte(layer.matte, frame.geometry.scale())
            .apply(cut, frame.geometry.toPicture(layer.matteCenter));
        picture.fill(Qt::black);
        QPainter(&picture).drawImage(0, 0, cut);
    }
}

void Compositor::applyFilter(const Layer& filter, QImage& picture)
{
    if (filter.strength <= 0.0F)
        return;
    if (const ColorTable* table = m_effects.table(filter.source))
        table->apply(picture, static_cast<double>(filter.strength));
}

} // namespace rvengine
