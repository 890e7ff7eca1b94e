// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SceneSketch.h"

#include <algorithm>
#include <memory>

using rvengine::EffectTarget;
using rvengine::Layer;
using rvengine::LayerKind;
using rvengine::PlacedLayer;

namespace {

std::uintptr_t newKey()
{
    static std::uintptr_t last = rvengine::MainLane;
    return ++last;
}

PlacedLayer placed(const Layer& layer, long long start, long long duration)
{
    PlacedLayer result;
    result.start = start;
    result.end = start + duration;
    result.layer = std::make_shared<const Layer>(layer);
    return result;
}

} // namespace

Layer SceneSketch::layer(LayerKind kind, const std::string& source) const
{
    Layer layer;
    layer.kind = kind;
    layer.key = newKey();
    layer.source = source;
    layer.placement.width = m_scene.canvas.width();
    layer.placement.height = m_scene.canvas.height();
    layer.placement.center = QPointF(m_scene.canvas.width() / 2, m_scene.canvas.height() / 2);
    return layer;
}

Layer SceneSketch::video(const std::string& source) const
{
    return layer(LayerKind::Video, source);
}

Layer SceneSketch::picture(const std::string& source) const
{
    return layer(LayerKind::Picture, source);
}

Layer SceneSketch::sound(const std::string& source) const
{
    return layer(LayerKind::Sound, source);
}

void SceneSketch::addMain(const Layer& layer, long long duration)
{
    const long long start = m_scene.main.empty() ? 0 : m_scene.main.back().end;
    m_scene.main.push_back(placed(layer, start, duration));
    extendTo(start + duration);
}

void SceneSketch::addMix(const Layer& layer, long long start, long long duration)
{
    m_scene.mix.push_back(placed(layer, start, duration));
    extendTo(start + duration);
}

void SceneSketch::addEffect(const Layer& effect, EffectTarget target, long long start,
                            long long duration)
{
    m_scene.mix.push_back(placed(effect, start, duration));
    m_scene.mix.back().target = target;
}

void SceneSketch::addBoundEffect(const Layer& effect, std::uintptr_t boundKey, long long start,
                                 long long duration)
{
    addEffect(effect, EffectTarget::Layer, start, duration);
    m_scene.mix.back().boundKey = boundKey;
}

void SceneSketch::extendTo(long long end)
{
    m_scene.duration = std::max(m_scene.duration, end);
}
