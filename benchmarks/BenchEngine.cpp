// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "BenchEngine.h"

#include <engine/MltRuntime.h>

#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

using namespace rvengine;

namespace {

constexpr long long sceneMs = 10000;
constexpr int framesPerSecond = 30;
constexpr double overlayAlpha = 0.8;

const QTemporaryDir& folder()
{
    static const QTemporaryDir instance;
    return instance;
}

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

/// The overlay covers a third of the canvas in each direction, at one of three places.
std::shared_ptr<Layer> overlay(QSize canvas, int place)
{
    const QSize size(640, 360);
    auto layer = videoLayer(BenchMedia::video(size), size);
    layer->alpha = static_cast<float>(overlayAlpha);
    layer->placement.scale = canvas.width() / 2.0 / size.width();
    layer->placement.center = {canvas.width() * (place + 1) / 4.0, canvas.height() / 2.0};
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
    matte->matteCenter = {canvas.width() * (place + 1) / 4.0, canvas.height() / 2.0};
    return matte;
}

} // namespace

std::string BenchMedia::video(QSize size)
{
    const QString path = folder().filePath(QString("%1.mp4").arg(size.height()));
    if (QFile::exists(path))
        return path.toStdString();
    const QString card =
        QString("testsrc2=size=%1x%2:rate=30:duration=10").arg(size.width()).arg(size.height());
    const QStringList arguments{
        "-v",      "error",   "-f",      "lavfi",    "-i",
        card,      "-f",      "lavfi",   "-i",       "sine=frequency=440:duration=10",
        "-c:v",    "libx264", "-preset", "veryfast", "-pix_fmt",
        "yuv420p", "-c:a",    "aac",     path};
    if (QProcess::execute("ffmpeg", arguments) != 0) {
        std::fprintf(stderr, "ffmpeg cannot make the media\n");
        std::exit(2);
    }
    return path.toStdString();
}

std::string BenchMedia::circle()
{
    const QString path = folder().filePath("circle.png");
    QImage picture(640, 360, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPoint(320, 180), 180, 180);
    painter.end();
    picture.save(path);
    return path.toStdString();
}

Scene benchScene(BenchScene kind, QSize canvas)
{
    Scene scene;
    scene.canvas = canvas;
    scene.duration = sceneMs;
    const auto main = videoLayer(BenchMedia::video(canvas), canvas);
    main->placement.center = {canvas.width() / 2.0, canvas.height() / 2.0};
    scene.main.push_back({0, sceneMs, main, EffectTarget::Canvas, 0});
    if (kind != BenchScene::Main)
        scene.mix.push_back({0, sceneMs, overlay(canvas, 0), EffectTarget::Canvas, 0});
    if (kind == BenchScene::MattedOverlay) {
        const auto layer = overlay(canvas, 2);
        scene.mix.push_back({0, sceneMs, layer, EffectTarget::Canvas, 0});
        scene.mix.push_back({0, sceneMs, roundMatte(canvas, 2), EffectTarget::Layer, layer->key});
    }
    return scene;
}

Scene manyClips(int count, QSize canvas)
{
    constexpr long long clipMs = 40;
    Scene scene;
    scene.canvas = canvas;
    scene.duration = count * clipMs;
    for (int i = 0; i < count; ++i) {
        const auto clip = videoLayer(BenchMedia::video(canvas), canvas);
        clip->placement.center = {canvas.width() / 2.0, canvas.height() / 2.0};
        clip->fileStart = i * clipMs % sceneMs;
        scene.main.push_back({i * clipMs, (i + 1) * clipMs, clip, EffectTarget::Canvas, 0});
    }
    return scene;
}

void addAbsentLayers(Scene& scene, int count)
{
    const QSize size(640, 360);
    for (int i = 0; i < count; ++i) {
        const long long start = sceneMs + i * 100;
        scene.mix.push_back({start, start + 1000, videoLayer(BenchMedia::video(size), size),
                             EffectTarget::Canvas, 0});
    }
}

MltScene::MltScene(BenchScene kind, QSize canvas)
    : m_canvas(canvas)
    , m_tractor((startMltRuntime(), m_profile.set_width(canvas.width()),
                 m_profile.set_height(canvas.height()),
                 m_profile.set_frame_rate(framesPerSecond, 1), m_profile.set_sample_aspect(1, 1),
                 m_profile.set_progressive(1), m_profile.set_colorspace(709),
                 m_profile.set_explicit(1), m_profile))
{
    m_tractor.set_track(open(canvas), 0);
    const int side = canvas.width() / 2;
    const int height = side * 9 / 16;
    const auto rectangle = [&](int place) {
        return std::to_string(canvas.width() * (place + 1) / 4 - side / 2) + " " +
               std::to_string(canvas.height() / 2 - height / 2) + " " + std::to_string(side) + " " +
               std::to_string(height) + " " + std::to_string(overlayAlpha);
    };
    if (kind != BenchScene::Main) {
        m_tractor.set_track(open(QSize(640, 360)), 1);
        addOverlay(1, rectangle(0), false);
    }
    if (kind == BenchScene::MattedOverlay) {
        m_tractor.set_track(open(QSize(640, 360)), 2);
        addOverlay(2, rectangle(2), true);
    }
}

Mlt::Producer& MltScene::open(QSize size)
{
    const std::string path = BenchMedia::video(size);
    m_producers.push_back(std::make_unique<Mlt::Producer>(m_profile, path.c_str()));
    require(*m_producers.back(), "producer for " + path);
    return *m_producers.back();
}

bool MltScene::require(Mlt::Properties& part, const std::string& name)
{
    if (part.is_valid())
        return true;
    m_problem = "MLT lacks the " + name;
    return false;
}

void MltScene::addOverlay(int track, const std::string& rectangle, bool round)
{
    if (round) {
        Mlt::Filter circle(m_profile, "shape", BenchMedia::circle().c_str());
        if (!require(circle, "filter shape"))
            return;
        circle.set("use_luminance", 1);
        circle.set("use_mix", 0);
        m_producers.back()->attach(circle);
    }
    Mlt::Transition blend(m_profile, "qtblend");
    if (!require(blend, "transition qtblend"))
        return;
    blend.set("rect", rectangle.c_str());
    blend.set("distort", 1);
    m_tractor.plant_transition(blend, 0, track);
}

bool MltScene::render(int position)
{
    m_tractor.seek(position);
    const std::unique_ptr<Mlt::Frame> frame(m_tractor.get_frame());
    mlt_image_format format = mlt_image_rgba;
    int width = m_canvas.width();
    int height = m_canvas.height();
    return frame->get_image(format, width, height) && width == m_canvas.width();
}

void rebuildMltPlaylist(Mlt::Profile& profile, Mlt::Producer& file, int clips)
{
    Mlt::Playlist playlist(profile);
    for (int i = 0; i < clips; ++i)
        playlist.append(file, i % 200, i % 200 + 1);
}
