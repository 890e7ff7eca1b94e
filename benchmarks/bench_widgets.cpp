// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RatioReporter.h"

#include <norvel/norvel.h>
#include <norvel/timeline/private/Reference.h>

#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <QCoreApplication>
#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPainter>
#include <QTemporaryDir>

#include <cmath>
#include <memory>

using namespace qrvkp;

namespace {

constexpr int strokePoints = 200;
constexpr double bound = 1.3;
const QSize viewSize(1280, 720);

/// The view with a canvas of the given size, which one track fills.
class BenchCanvas
{
public:
    explicit BenchCanvas(const QSize& size)
    {
        const auto width = static_cast<float>(size.width());
        const auto height = static_cast<float>(size.height());
        application.getRvKpConfig()->setKpSize(width, height);
        application.getGraphicsView()->resize(viewSize);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("picture.png"));
        QImage picture(4, 2, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        picture.save(path);
        track = norvel::adopt(RvSpriteTrack::create(path.toStdString(), 0, 1000));
        track->setWidthAndHeight(width, height);
        track->setPosition(width / 2, height / 2);
    }

    RvKpApplication application;
    norvel::Reference<RvSpriteTrack> track;
};

/// A point of a stroke that winds over a view of the size `viewSize`.
QPointF strokePoint(int index)
{
    const double share = static_cast<double>(index) / strokePoints;
    return {std::round(100 + share * (viewSize.width() - 200)),
            std::round(viewSize.height() * (0.5 + 0.35 * std::sin(share * 20.0)))};
}

void send(QWidget& widget, QEvent::Type type, const QPointF& point, Qt::MouseButton button)
{
    QMouseEvent event(type, point, point, button, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&widget, &event);
}

void drawStroke(QWidget& widget)
{
    send(widget, QEvent::MouseButtonPress, strokePoint(0), Qt::LeftButton);
    for (int i = 1; i < strokePoints; ++i)
        send(widget, QEvent::MouseMove, strokePoint(i), Qt::NoButton);
}

QSize sizeOf(const benchmark::State& state)
{
    return {static_cast<int>(state.range(0)), static_cast<int>(state.range(0)) * 9 / 16};
}

/// A mask widget over the track, with a stroke in progress.
std::unique_ptr<RvTrackMaskWidget> maskWithStroke(BenchCanvas& canvas)
{
    auto mask = std::make_unique<RvTrackMaskWidget>(&canvas.application, nullptr);
    mask->setTrack(canvas.track.get());
    mask->updateGeometry();
    drawStroke(*mask);
    return mask;
}

/// What the widget cannot avoid: the stroke drawn into the mask, the mask stretched onto a surface.
void paintBare(QPixmap& mask, const QPainterPath& path, int penWidth, QPixmap& surface)
{
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::blue, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.setOpacity(0.38);
        painter.drawPath(path);
    }
    QPainter painter(&surface);
    painter.drawPixmap(surface.rect(), mask, mask.rect());
}

void paintStroke(benchmark::State& state)
{
    BenchCanvas canvas(sizeOf(state));
    const auto mask = maskWithStroke(canvas);
    QPixmap surface(viewSize);
    surface.fill(Qt::transparent);
    const QPointF last = strokePoint(strokePoints - 1);
    for (auto _ : state) {
        send(*mask, QEvent::MouseMove, last, Qt::NoButton); // due again, and no longer
        mask->render(&surface, {}, {}, {});
    }
    state.SetItemsProcessed(state.iterations());
}

void paintStrokeBare(benchmark::State& state)
{
    const QSize size = sizeOf(state);
    const double zoom = static_cast<double>(size.width()) / viewSize.width();
    QPixmap mask(size);
    mask.fill(Qt::transparent);
    QPixmap surface(viewSize);
    surface.fill(Qt::transparent);
    QPainterPath path(strokePoint(0) * zoom);
    for (int i = 1; i < strokePoints; ++i)
        path.lineTo(strokePoint(i) * zoom);
    for (auto _ : state)
        paintBare(mask, path, static_cast<int>(20 * zoom), surface);
    state.SetItemsProcessed(state.iterations());
}

void maskImage(benchmark::State& state)
{
    BenchCanvas canvas(sizeOf(state));
    const auto mask = maskWithStroke(canvas);
    mask->grab();
    for (auto _ : state) {
        const std::unique_ptr<QImage> image(mask->getMaskImage());
        const std::unique_ptr<const uchar[]> pixels(image->constBits());
        benchmark::DoNotOptimize(pixels[0]);
    }
    state.SetItemsProcessed(state.iterations());
}

void maskImageBare(benchmark::State& state)
{
    QPixmap mask(sizeOf(state));
    mask.fill(Qt::transparent);
    QPixmap surface(viewSize);
    const double zoom = static_cast<double>(mask.width()) / viewSize.width();
    QPainterPath path(strokePoint(0) * zoom);
    for (int i = 1; i < strokePoints; ++i)
        path.lineTo(strokePoint(i) * zoom);
    paintBare(mask, path, static_cast<int>(20 * zoom), surface);
    for (auto _ : state)
        benchmark::DoNotOptimize(mask.toImage().convertToFormat(QImage::Format_Grayscale8));
    state.SetItemsProcessed(state.iterations());
}

constexpr float blur = 2.0F;

void blurMask(benchmark::State& state)
{
    const QRect rect(QPoint(), sizeOf(state));
    LabPaintMaskView view(nullptr);
    view.setupPaintShowRect(rect, rect);
    view.setupPaintLineWidth(40);
    drawStroke(view);
    for (auto _ : state)
        benchmark::DoNotOptimize(view.lastPaintBlurMaskImage(blur, false));
    state.SetItemsProcessed(state.iterations());
}

void blurBare(benchmark::State& state)
{
    const QRect rect(QPoint(), sizeOf(state));
    LabPaintMaskView view(nullptr);
    view.setupPaintShowRect(rect, rect);
    view.setupPaintLineWidth(40);
    drawStroke(view);
    const QPixmap image = view.lastPaintBlurMaskImage(0.0F, false);
    for (auto _ : state) {
        QGraphicsScene scene;
        QGraphicsPixmapItem* item = scene.addPixmap(image);
        auto* effect = new QGraphicsBlurEffect;
        effect->setBlurRadius(static_cast<double>(blur) * 5.0);
        item->setGraphicsEffect(effect);
        QPixmap result(image.size());
        result.fill(Qt::transparent);
        QPainter painter(&result);
        scene.render(&painter);
        benchmark::DoNotOptimize(result);
    }
    state.SetItemsProcessed(state.iterations());
}

/// Another zoom each time, so that every layout has something to do.
float nextScale(float scale)
{
    return scale < 5.0F ? scale * 1.1F : 1.5F;
}

void layOutMap(benchmark::State& state)
{
    BenchCanvas canvas(sizeOf(state));
    norvel::CanvasViewer map(&canvas.application);
    float scale = 1.5F;
    for (auto _ : state) {
        scale = nextScale(scale);
        canvas.application.setCanvasScale(scale);
        map.update();
    }
    state.SetItemsProcessed(state.iterations());
}

/// The framework asked for every size, two rectangles set, and the canvas moved.
void layOutMapBare(benchmark::State& state)
{
    BenchCanvas canvas(sizeOf(state));
    QGraphicsScene* scene = canvas.application.getGraphicsView()->scene();
    QGraphicsRectItem* map = scene->addRect({});
    auto* viewer = new QGraphicsRectItem(map);
    float scale = 1.5F;
    for (auto _ : state) {
        scale = nextScale(scale);
        canvas.application.setCanvasScale(scale);
        const RvKpConfig* config = canvas.application.getRvKpConfig();
        benchmark::DoNotOptimize(config->getKpSizeWidth() + config->getKpSizeHeight());
        const QGraphicsView* view = canvas.application.getGraphicsView();
        benchmark::DoNotOptimize(view->width() + view->height());
        benchmark::DoNotOptimize(canvas.application.getCanvasScale());
        benchmark::DoNotOptimize(canvas.application.getCanvasShowDimension());
        map->setRect(0, 0, 96, 54);
        const double side = 1.0 / static_cast<double>(scale);
        viewer->setRect(48 - 48 * side, 27 - 27 * side, 96 * side, 54 * side);
        canvas.application.setCanvasPosition(scale, -scale);
    }
    state.SetItemsProcessed(state.iterations());
}

using Benchmark = void (*)(benchmark::State&);

/// A widget's work and the bare calls in it.
struct Pair
{
    std::string what;
    std::string name;
    Benchmark function;
    Benchmark bare;
    std::vector<int> widths;
    bool isThreaded = false; ///< Qt does it in several threads: only the wall clock tells
};

const std::vector<Pair>& pairs()
{
    static const std::vector<Pair> all{
        {"one paint of a stroke of 200 points",
         "paint_stroke",
         paintStroke,
         paintStrokeBare,
         {1920, 3840}},
        {"mask image", "mask_image", maskImage, maskImageBare, {1920, 3840}, true},
        {"blurred painting", "blur", blurMask, blurBare, {1920}},
        {"layout of the map", "map_layout", layOutMap, layOutMapBare, {1920}}};
    return all;
}

void registerRun(const std::string& name, Benchmark function, int width, bool isThreaded)
{
    auto* run = benchmark::RegisterBenchmark(name.c_str(), function)->Arg(width);
    run->Unit(benchmark::kMillisecond);
    if (isThreaded)
        run->UseRealTime();
}

void registerAll()
{
    for (const Pair& pair : pairs()) {
        for (const int width : pair.widths) {
            registerRun(pair.name, pair.function, width, pair.isThreaded);
            registerRun(pair.name + "_bare", pair.bare, width, pair.isThreaded);
        }
    }
}

bool printPromises(const RatioReporter& reporter)
{
    std::printf("\nRatios of time to the bare calls\n");
    bool kept = true;
    for (const Pair& pair : pairs()) {
        for (const int width : pair.widths) {
            const std::string size = std::to_string(width);
            const std::string run = "/" + size + (pair.isThreaded ? "/real_time" : "");
            kept &= reporter.printRatio(pair.what + ", " + size + " px wide", pair.name + run,
                                        pair.name + "_bare" + run, bound);
        }
    }
    return kept;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, registerAll, printPromises);
}
