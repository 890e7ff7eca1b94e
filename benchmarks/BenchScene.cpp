// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "BenchScene.h"

#include "BenchMedia.h"

#include <cstdint>
#include <memory>
#include <string>

using namespace rvengine;

namespace {

constexpr long long sceneMs = 10000;

std::shared_ptr<Layer> videoLayer(const std::string& path, QSize size)
{
    static std::uintptr_t keys = 0;
    auto layer = std::make_shared<Layer>();
    layer->key = ++keys;
    layer->source = path;
    layer->duration = sceneMs;
    layer->placement.width = size.width();
    layer->placement.height = size.height();
    return layer;
}

/// A layer that fills the canvas.
std::shared_ptr<Layer> mainLayer(const std::string& path, QSize canvas)
{
    auto layer = videoLayer(path, canvas);
    layer->placement.center = QRectF(QPointF(0, 0), QSizeF(canvas)).center();
    return layer;
}

Scene emptyScene(QSize canvas, long long duration)
{
    Scene scene;
    scene.canvas = canvas;
    scene.duration = duration;
    return scene;
}

QPointF overlayCenter(QSize canvas, int place)
{
    return QRectF(overlayRectangle(canvas, place)).center();
}

std::shared_ptr<Layer> overlay(QSize canvas, int place)
{
    auto layer = videoLayer(BenchMedia::video(overlayVideo), overlayVideo);
    layer->alpha = static_cast<float>(overlayAlpha);
    layer->placement.scale = canvas.width() / 2.0 / overlayVideo.width();
    layer->placement.center = overlayCenter(canvas, place);
    return layer;
}

std::shared_ptr<Layer> roundMatte(QSize canvas, int place)
{
    QPainterPath circle;
    circle.addEllipse(0, 0, 400, 400);
    auto matte = std::make_shared<Layer>();
    matte->kind = LayerKind::Matte;
    matte->duration = sceneMs;
    matte->matte = std::make_shared<const MatteShape>(
        MatteShape{circle, QSizeF(400, 400), canvas.height() / 800.0, 5.0, true});
    matte->matteCenter = overlayCenter(canvas, place);
    return matte;
}

} // namespace

std::vector<int> overlayPlaces(BenchScene kind)
{
    switch (kind) {
    case BenchScene::Overlay:
        return {0};
    case BenchScene::MattedOverlay:
        return {0, 2};
    default:
        return {};
    }
}

QRect overlayRectangle(QSize canvas, int place)
{
    return {QPoint(canvas.width() * place / 4, canvas.height() / 4), canvas / 2};
}

Scene benchScene(BenchScene kind, QSize canvas)
{
    Scene scene = emptyScene(canvas, sceneMs);
    const auto main = mainLayer(BenchMedia::video(canvas), canvas);
    scene.main.push_back({0, sceneMs, main, EffectTarget::Canvas, 0});
    for (const int place : overlayPlaces(kind))
        scene.mix.push_back({0, sceneMs, overlay(canvas, place), EffectTarget::Canvas, 0});
    if (kind == BenchScene::MattedOverlay) {
        const std::uintptr_t key = scene.mix.back().layer->key;
        scene.mix.push_back({0, sceneMs, roundMatte(canvas, 2), EffectTarget::Layer, key});
    }
    return scene;
}

Scene clipsOfOneFile(int count, QSize canvas)
{
    const long long length = sceneMs / count;
    Scene scene = emptyScene(canvas, count * length);
    for (int i = 0; i < count; ++i) {
        const auto clip = mainLayer(BenchMedia::video(canvas), canvas);
        clip->fileStart = i * length;
        clip->duration = length;
        scene.main.push_back({i * length, (i + 1) * length, clip, EffectTarget::Canvas, 0});
    }
    return scene;
}

Scene clipsOfFiles(int count, long long length, long long fileStart, QSize canvas)
{
    Scene scene = emptyScene(canvas, count * length);
    for (int i = 0; i < count; ++i) {
        const auto clip = mainLayer(BenchMedia::copy(i), canvas);
        clip->fileStart = fileStart;
        clip->duration = length;
        scene.main.push_back({i * length, (i + 1) * length, clip, EffectTarget::Canvas, 0});
    }
    return scene;
}

Scene longScene()
{
    constexpr long long length = 600000;
    const QSize canvas(640, 360);
    Scene scene = emptyScene(canvas, length);
    const auto clip = mainLayer(BenchMedia::longVideo(), canvas);
    clip->duration = length;
    scene.main.push_back({0, length, clip, EffectTarget::Canvas, 0});
    return scene;
}

void addAbsentLayers(Scene& scene, int count)
{
    for (int i = 0; i < count; ++i) {
        const long long start = sceneMs + i * 100;
        const auto layer = videoLayer(BenchMedia::video(overlayVideo), overlayVideo);
        scene.mix.push_back({start, start + 1000, layer, EffectTarget::Canvas, 0});
    }
}
