// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>

#include <QPointF>
#include <QSizeF>

#include <string>

/// A small scene that is put together layer by layer.
class SceneSketch
{
public:
    explicit SceneSketch(QSizeF canvas = QSizeF(320.0, 180.0)) { m_scene.canvas = canvas; }

    /// A layer of a file with a key of its own, centred on the canvas and as large as that.
    rvengine::Layer layer(rvengine::LayerKind kind, const std::string& source) const;
    rvengine::Layer video(const std::string& source) const;
    rvengine::Layer picture(const std::string& source) const;
    rvengine::Layer sound(const std::string& source) const;

    /// Puts a layer of `duration` ms behind the last one of the main line.
    void addMain(const rvengine::Layer& layer, long long duration = 1000);

    /// Puts a layer above the others.
    void addMix(const rvengine::Layer& layer, long long start = 0, long long duration = 1000);

    /// Puts an effect above the others.
    void addEffect(const rvengine::Layer& effect, rvengine::EffectTarget target,
                   long long start = 0, long long duration = 1000);

    /// Puts an effect that acts on the layer with the key `boundKey` above the others.
    void addBoundEffect(const rvengine::Layer& effect, std::uintptr_t boundKey, long long start = 0,
                        long long duration = 1000);

    const rvengine::Scene& scene() const { return m_scene; }
    rvengine::Scene& scene() { return m_scene; }

private:
    void extendTo(long long end);

    rvengine::Scene m_scene;
};
